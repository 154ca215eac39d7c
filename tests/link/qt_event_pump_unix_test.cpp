// The event loop's pump, over the real port on a pseudo-terminal. What a pause holds back:
// input_hold_test.cpp.
#include "link/deadline.h"
#include "link/qt_event_pump.h"
#include "support/pty_bench.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDateTime>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

struct qt_event_pump : testing::Test, PtyBench {
  /// The shortest of several tries: what a busy machine adds does not count.
  static milliseconds shortest(const std::function<void()>& action) {
    milliseconds best = milliseconds::max();
    for (int i = 0; i < 10; ++i) {
      best = std::min(best, time_of(action));
    }
    return best;
  }
};

// --- yield ----------------------------------------------------------------------------------------

TEST_F(qt_event_pump, a_yield_lasts_ten_milliseconds_and_not_less) {
  milliseconds shortest_yield = milliseconds::max();
  for (int i = 0; i < 20; ++i) {
    shortest_yield = std::min(shortest_yield, time_of([&] { pump.yield(); }));
  }
  EXPECT_EQ(shortest_yield, 10ms);
}

TEST_F(qt_event_pump, a_waiting_byte_ends_a_yield_at_once) {
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1; }));
  EXPECT_LE(shortest([&] { pump.yield(); }), 1ms);
}

TEST_F(qt_event_pump, a_byte_that_comes_during_a_yield_ends_it) {
  const auto time = shortest([&] {
    std::thread reader{[&] {
      std::this_thread::sleep_for(2ms);
      line.write("x");
    }};
    pump.yield();
    reader.join();
    link.clearcomm();
  });
  EXPECT_GE(time, 2ms);
  EXPECT_LT(time, 8ms);
}

TEST_F(qt_event_pump, a_byte_does_not_end_a_yield_for_deadlines_only) {
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1; }));
  EXPECT_GE(shortest([&] { pump.yield(Wake::deadline); }), 10ms);
}

TEST_F(qt_event_pump, a_deadline_ends_both_kinds_of_yield) {
  for (const Wake wake : {Wake::byte_or_deadline, Wake::deadline}) {
    const auto time = shortest([&] {
      const Deadline deadline{pump, 3ms};
      pump.yield(wake);
      EXPECT_TRUE(deadline.expired());
    });
    EXPECT_EQ(time, 3ms);
  }
}

TEST_F(qt_event_pump, mouse_moves_and_posted_events_do_not_end_a_yield) {
  QWidget window;
  window.setMouseTracking(true);
  QTimer mouse;
  int moves = 0;
  QObject::connect(&mouse, &QTimer::timeout, &window, [&] {
    ++moves;
    QCoreApplication::postEvent(
        &window, new QMouseEvent(QEvent::MouseMove, QPointF(moves, 1), QPointF(moves, 1), Qt::NoButton,
                                 Qt::NoButton, Qt::NoModifier));
    window.update();
  });
  mouse.start(0ms);
  const auto time = time_of([&] {
    for (int i = 0; i < 10; ++i) {
      pump.yield();
    }
  });
  EXPECT_GE(time, 100ms);
  EXPECT_GT(moves, 10) << "the mouse did not move";
}

TEST_F(qt_event_pump, events_are_processed_during_a_yield) {
  std::vector<int> handled;
  QTimer::singleShot(1ms, &pump, [&] { handled.push_back(1); });
  QTimer::singleShot(3ms, &pump, [&] { handled.push_back(2); });
  QMetaObject::invokeMethod(
      &pump, [&] { handled.push_back(0); }, Qt::QueuedConnection);
  pump.yield();
  EXPECT_EQ(handled, (std::vector{0, 1, 2}));
}

TEST_F(qt_event_pump, what_waits_already_is_processed_even_when_a_byte_ends_the_yield_at_once) {
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1; }));
  bool handled = false;
  QMetaObject::invokeMethod(
      &pump, [&] { handled = true; }, Qt::QueuedConnection);
  pump.yield();
  EXPECT_TRUE(handled);
}

TEST_F(qt_event_pump, waiting_costs_no_processor_time) {
  const auto before = processor_time();
  for (int i = 0; i < 100; ++i) {
    pump.yield();
  }
  EXPECT_LT(processor_time() - before, 50ms) << "of about a second";
}

TEST_F(qt_event_pump, waiting_for_deadlines_over_a_waiting_byte_costs_none_either) {
  line.write("x");
  const auto before = processor_time();
  for (int i = 0; i < 50; ++i) {
    pump.yield(Wake::deadline);
  }
  EXPECT_LT(processor_time() - before, 25ms) << "of about half a second";
}

TEST_F(qt_event_pump, ten_yields_for_deadlines_let_the_terminal_show_a_reply) {
  std::string shown;
  std::unique_ptr<Ticker> terminal;
  terminal = pump.make_ticker(1ms, [&] {
    while (const auto character = port.read_char()) {
      shown += *character;
    }
    terminal->stop();
  });
  port.on_arrival = [&] {
    if (!terminal->running()) {
      terminal->start();
    }
  };
  // The reply comes during the pause of the step, as the hardware test has it.
  line.write("reply");
  pump.sleep(20ms);
  EXPECT_EQ(shown, "");
  for (int i = 0; i < 10; ++i) {
    pump.yield(Wake::deadline);
  }
  EXPECT_EQ(shown, "reply");
  // And what comes during the yields is shown too.
  line.write(" more");
  for (int i = 0; i < 10; ++i) {
    pump.yield(Wake::deadline);
  }
  EXPECT_EQ(shown, "reply more");
}

TEST_F(qt_event_pump, a_yield_nested_in_another_one_ends_both) {
  bool inner = false;
  QTimer::singleShot(1ms, &pump, [&] {
    pump.yield();
    inner = true;
  });
  const auto time = time_of([&] { pump.yield(); });
  EXPECT_TRUE(inner);
  EXPECT_GE(time, 11ms);
  EXPECT_LT(time, 500ms);
}

// --- Closing --------------------------------------------------------------------------------------

TEST_F(qt_event_pump, a_close_during_a_yield_ends_it_at_once) {
  const auto time = time_of([&] {
    QTimer::singleShot(2ms, &pump, [&] { pump.close_program(); });
    EXPECT_THROW(pump.yield(), ProgramClosing);
  });
  EXPECT_GE(time, 2ms);
  EXPECT_THROW(pump.yield(), ProgramClosing);
}

TEST_F(qt_event_pump, a_close_during_a_pause_ends_it_at_once) {
  QTimer::singleShot(20ms, &pump, [&] { pump.close_program(); });
  const auto time = time_of([&] { EXPECT_THROW(pump.sleep(5s), ProgramClosing); });
  EXPECT_LT(time, 1s);
  EXPECT_FALSE(pump.pausing());
  EXPECT_THROW(pump.sleep(5s), ProgramClosing);
}

TEST_F(qt_event_pump, a_close_in_the_middle_of_an_exchange_ends_the_click) {
  use_network("5");
  QTimer::singleShot(50ms, &pump, [&] { pump.close_program(); });
  const auto time = time_of([&] {
    clicks.run([&] {
      static_cast<void>(link.send_command("V", true));
      FAIL() << "went on after the program was closed";
    });
  });
  EXPECT_LT(time, 1s);
  EXPECT_TRUE(dialogs.shown.empty());
}

// --- Pauses and tickers ---------------------------------------------------------------------------

TEST_F(qt_event_pump, a_pause_lasts_as_long_as_asked) {
  const auto time = time_of([&] { pump.sleep(50ms); });
  EXPECT_GE(time, 50ms);
  EXPECT_LT(time, 500ms);
}

TEST_F(qt_event_pump, a_pause_costs_no_processor_time) {
  const auto before = processor_time();
  pump.sleep(500ms);
  EXPECT_LT(processor_time() - before, 25ms);
}

TEST_F(qt_event_pump, pausing_is_told_from_within) {
  bool pausing = false;
  QTimer::singleShot(5ms, &pump, [&] { pausing = pump.pausing(); });
  EXPECT_FALSE(pump.pausing());
  pump.sleep(20ms);
  EXPECT_TRUE(pausing);
  EXPECT_FALSE(pump.pausing());
}

TEST_F(qt_event_pump, a_ticker_ticks_every_interval_until_stopped) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(20ms, [&] { ++ticks; });
  EXPECT_FALSE(ticker->running());
  ticker->start();
  EXPECT_TRUE(ticker->running());
  const auto time = time_of([&] { EXPECT_TRUE(wait_until([&] { return ticks == 3; })); });
  EXPECT_GE(time, 58ms);
  ticker->stop();
  wait_until([] { return false; }, 60ms);
  EXPECT_EQ(ticks, 3);
}

TEST_F(qt_event_pump, ticks_of_a_pause_come_once_after_it) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(100ms, [&] { ++ticks; });
  ticker->start();
  pump.sleep(350ms);
  EXPECT_EQ(ticks, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, 1);
}

TEST_F(qt_event_pump, a_held_tick_is_dropped_when_its_ticker_is_stopped_or_started_anew) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(200ms, [&] { ++ticks; });
  ticker->start();
  pump.sleep(250ms);
  ticker->stop();
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, 0);
  ticker->start();
  pump.sleep(250ms);
  ticker->start();
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, 0) << "a time-out begun anew must not come at once";
}

TEST_F(qt_event_pump, a_fast_ticker_wakes_nobody_in_a_pause_ticks_once_after_it_and_goes_on) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(1ms, [&] { ++ticks; });
  ticker->start();
  int wakes = 0;
  QObject counter;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &counter,
                   [&wakes] { ++wakes; });
  const auto before = processor_time();
  pump.sleep(1000ms);
  EXPECT_LT(processor_time() - before, 20ms);
  EXPECT_LE(wakes, 20);
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(ticker->running());
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, 1);
  EXPECT_TRUE(ticker->running());
  EXPECT_TRUE(wait_until([&] { return ticks >= 10; }, 1000ms));
}

TEST_F(qt_event_pump, a_ticker_stopped_in_the_pause_drops_the_tick_that_waits_in_it) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(10ms, [&] { ++ticks; });
  ticker->start();
  // Not held back, as a hang-up is not: it comes when the tick has long been due.
  QTimer::singleShot(100ms, &pump, [&] {
    EXPECT_TRUE(ticker->running());
    ticker->stop();
  });
  pump.sleep(200ms);
  EXPECT_FALSE(ticker->running());
  wait_until([] { return false; }, 50ms);
  EXPECT_EQ(ticks, 0);
}

TEST_F(qt_event_pump, a_held_tick_goes_with_its_ticker) {
  int ticks = 0;
  auto ticker = pump.make_ticker(10ms, [&] { ++ticks; });
  ticker->start();
  pump.sleep(50ms);
  ticker.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, 0);
}

TEST_F(qt_event_pump, a_tick_may_begin_a_wait_that_the_closing_of_the_program_ends) {
  const auto ticker = pump.make_ticker(1ms, [&] {
    pump.close_program();
    pump.yield();
    FAIL() << "went on after the program was closed";
  });
  ticker->start();
  EXPECT_TRUE(wait_until([&] { return pump.closing(); }));
}

TEST_F(qt_event_pump, actions_for_after_a_pause_keep_their_order) {
  std::vector<int> order;
  QTimer::singleShot(1ms, &pump, [&] {
    pump.after_pause([&] { order.push_back(1); });
    pump.after_pause([&] { order.push_back(2); });
  });
  pump.sleep(20ms);
  order.push_back(0);
  QCoreApplication::processEvents();
  EXPECT_EQ(order, (std::vector{0, 1, 2}));
}

TEST_F(qt_event_pump, an_action_that_pauses_itself_holds_the_next_one_back) {
  std::vector<int> order;
  QTimer::singleShot(1ms, &pump, [&] {
    pump.after_pause([&] {
      pump.sleep(20ms);
      order.push_back(1);
    });
    pump.after_pause([&] { order.push_back(2); });
  });
  pump.sleep(20ms);
  EXPECT_TRUE(wait_until([&] { return order.size() == 2; }));
  EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST_F(qt_event_pump, without_a_pause_an_action_comes_from_the_event_loop) {
  bool ran = false;
  pump.after_pause([&] { ran = true; });
  EXPECT_FALSE(ran);
  QCoreApplication::processEvents();
  EXPECT_TRUE(ran);
}

TEST_F(qt_event_pump, the_time_of_day_is_the_computers_own) {
  const auto before = QDateTime::currentDateTime();
  const LocalTime now = pump.local_time();
  const QDateTime told{QDate(now.year, now.month, now.day), QTime(now.hour, now.minute, now.second)};
  EXPECT_LE(std::abs(before.secsTo(told)), 1);
  EXPECT_EQ(now.day_of_week, told.date().dayOfWeek());
}

}  // namespace
