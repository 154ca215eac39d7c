// The terminal on a real port: a pseudo-terminal with the test at its far end.

#include "support/line_bench.h"
#include "tools/fullterm.h"
#include "tools/term.h"
#include "tools/terminal_typing.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// With the terminal on show.
struct TermLine : LineBench {
  TypingBox* typing = window.findChild<TypingBox*>(QStringLiteral("Text7"));
  TerminalView* received = window.findChild<TerminalView*>(QStringLiteral("Text1"));

  TermLine() { open(ScreenCode::term); }

  FullTermWindow& open_full_screen() {
    QTest::mouseClick(window.findChild<QPushButton*>(QStringLiteral("full_screen")), Qt::LeftButton);
    FullTermWindow& full = *static_cast<TermScreen*>(window.screen(ScreenCode::term))->full_screen();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&full));
    return full;
  }
};

/// A far end that never stops sending, as long as it lives.
class Flood {
 public:
  explicit Flood(const Pty& line)
      : thread_([this, &line] {
          while (!done_) {
            line.write_some(std::string(4096, 'x'));
          }
        }) {}
  ~Flood() {
    done_ = true;
    thread_.join();
  }
  Flood(const Flood&) = delete;
  Flood& operator=(const Flood&) = delete;

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

/// Runs the program's event loop as the program does, and closes its main window when `condition` holds.
/// @return how long the loop runs on after that
std::chrono::milliseconds time_to_end(MainWindow& window, std::function<bool()> condition) {
  QElapsedTimer since_close;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &window, [&] {
    if (condition()) {
      look.stop();
      since_close.start();
      window.close();
    }
  });
  QObject::connect(&window, &MainWindow::closed, qApp, [] { QApplication::exit(0); });
  look.start(10);
  QTimer::singleShot(10s, &window, [] { QApplication::exit(1); });  // a test that fails ends too
  QApplication::exec();
  return std::chrono::milliseconds(since_close.elapsed());
}

std::string all_bytes() {
  std::string bytes;
  for (int code = 0; code < 256; ++code) {
    bytes += static_cast<char>(code);
  }
  return bytes;
}

/// Milliseconds that `count` batches of a tick's size take to be shown, painting included.
qint64 time_to_show(TerminalView& view, int count) {
  const ReceivedLines batch{std::string(4096, 'x')};
  QElapsedTimer timer;
  timer.start();
  for (int index = 0; index < count; ++index) {
    view.append(batch);
    view.viewport()->repaint();
  }
  return timer.elapsed();
}

}  // namespace

TEST(term_line, what_is_typed_reaches_the_far_end_and_its_answer_is_shown) {
  TermLine bench;
  QTest::keyClicks(bench.typing, QStringLiteral("V"));
  QTest::keyClick(bench.typing, Qt::Key_Return);
  QTest::keyClick(bench.typing, Qt::Key_F9);
  QTest::keyClick(bench.typing, Qt::Key_F10);
  EXPECT_TRUE(bytes_equal(bench.line.read(4), "V\r\0\x80"_bytes));
  bench.line.write("Orin\r\x06");
  EXPECT_TRUE(wait_until([&] { return bench.received->content().size() == 8; }));
  EXPECT_EQ(bench.received->content().lines(), (std::vector<std::string>{"Orin", "^6\x06"}));
}

TEST(term_line, every_byte_value_passes_in_both_directions) {
  TermLine bench;
  for (int code = 0; code < 256; ++code) {
    QTest::keyPress(bench.typing, Qt::Key_Alt);
    for (const QChar digit : QString::number(code)) {
      QTest::keyClick(bench.typing, static_cast<Qt::Key>(digit.unicode()), Qt::KeypadModifier);
    }
    QTest::keyRelease(bench.typing, Qt::Key_Alt);
  }
  EXPECT_TRUE(bytes_equal(bench.line.read(256), all_bytes()));
  EXPECT_TRUE(bytes_equal(bench.typing->content().lines().front(), all_bytes()));

  ReceivedLines expected(1);
  for (const char byte : all_bytes()) {
    append_received(expected, byte);
  }
  bench.line.write(all_bytes());
  EXPECT_TRUE(wait_until([&] { return bench.received->content().lines() == expected; }));
}

TEST(term_line, a_line_of_a_megabyte_without_a_break_costs_no_more_than_an_empty_one) {
  TerminalView view("box", QStringLiteral("Box"), TerminalView::LongLines::scroll);
  view.resize(600, 300);
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  const qint64 at_first = time_to_show(view, 50);
  while (view.content().size() < 1024 * 1024) {
    view.append({std::string(4096, 'x')});
  }
  const qint64 at_last = time_to_show(view, 50);
  RecordProperty("first_50_ms", static_cast<int>(at_first));
  RecordProperty("last_50_ms", static_cast<int>(at_last));
  EXPECT_LT(at_last, 2 * at_first + 100);
  EXPECT_EQ(view.content().line_count(), 1);
}

TEST(term_line, a_long_line_of_typed_text_stays_fast_too) {
  TerminalView view("box", QStringLiteral("Box"), TerminalView::LongLines::wrap);
  view.resize(600, 300);
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  const qint64 at_first = time_to_show(view, 50);
  view.append({std::string(1024 * 1024, 'x')});
  const qint64 at_last = time_to_show(view, 50);
  RecordProperty("first_50_ms", static_cast<int>(at_first));
  RecordProperty("last_50_ms", static_cast<int>(at_last));
  EXPECT_LT(at_last, 2 * at_first + 100);
}

TEST(term_line, a_flood_of_megabytes_is_shown_whole_and_never_stalls_the_window) {
  TermLine bench;
  constexpr std::size_t amount = 2 * 1024 * 1024;
  std::thread far_end([&bench] {
    const std::string piece(4096, 'x');
    for (std::size_t written = 0; written < amount;) {
      written += bench.line.write_some(std::string_view(piece).substr(0, amount - written));
    }
  });
  // A heartbeat every 10 ms: as long as it comes, clicks are answered.
  QElapsedTimer since_beat;
  since_beat.start();
  qint64 longest = 0;
  QTimer heart;
  QObject::connect(&heart, &QTimer::timeout, &heart,
                   [&] { longest = std::max(longest, since_beat.restart()); });
  heart.start(10);
  EXPECT_TRUE(wait_until([&] { return bench.received->content().size() == static_cast<int>(amount); }, 60s));
  far_end.join();
  RecordProperty("longest_gap_ms", static_cast<int>(longest));
  EXPECT_LT(longest, 300);
  EXPECT_EQ(bench.received->content().line_count(), 1);
}

TEST(term_line, the_silent_terminal_wakes_hardly_ever) {
  TermLine bench;
  const int flash_time = QApplication::cursorFlashTime();
  QApplication::setCursorFlashTime(0);  // the caret's blinking is not counted
  bench.received->setFocus();
  bench.typing->setFocus();
  QTest::qWait(200);
  int wakes = 0;
  QObject counter;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &counter,
                   [&wakes] { ++wakes; });
  QEventLoop loop;
  QTimer::singleShot(2000, &loop, &QEventLoop::quit);
  loop.exec();
  QApplication::setCursorFlashTime(flash_time);
  RecordProperty("wakes_in_two_seconds", wakes);
  EXPECT_LE(wakes, 8);
}

TEST(term_line, none_is_lost_and_none_shown_twice_while_both_terminals_hand_the_port_over) {
  TermLine bench;
  FullTermWindow& full = bench.open_full_screen();

  std::string sent;
  for (int number = 0; sent.size() < 4000; ++number) {
    sent += std::to_string(number) + ' ';
  }
  std::atomic<bool> done = false;
  std::thread far_end([&] {
    for (std::size_t place = 0; place < sent.size(); place += 3) {
      bench.line.write(std::string_view(sent).substr(place, 3));
      std::this_thread::sleep_for(1ms);
    }
    done = true;
  });
  // The full screen starts anew whenever it is activated: what it drew is collected just before.
  std::string shown;
  const auto terminal_text = [&bench] { return bench.received->text().toStdString(); };
  const auto page = [&full] {
    std::string drawn = full.captured();
    drawn.erase(std::remove(drawn.begin(), drawn.end(), '\xFF'), drawn.end());
    return drawn;
  };
  int switches = 0;
  while (!done) {
    const std::string before = terminal_text();
    bench.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&bench.window));
    EXPECT_TRUE(wait_until([&] { return terminal_text().size() > before.size() + 20 || done; }));
    shown += page();
    full.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&full));
    shown += terminal_text().substr(before.size());
    EXPECT_TRUE(wait_until([&] { return page().size() > 50 || done; }));
    ++switches;
  }
  far_end.join();
  EXPECT_TRUE(wait_until([&] { return shown.size() + page().size() >= sent.size(); }));
  EXPECT_EQ(bench.program.services().link.bytes_waiting(), 0U);
  shown += page();
  EXPECT_GT(switches, 10);
  EXPECT_TRUE(bytes_equal(shown, sent));
}

TEST(term_line, pulling_the_adapter_leaves_the_terminal_silent_and_typing_harmless) {
  TermLine bench;
  bench.line.hang_up();
  EXPECT_TRUE(wait_until([&] { return !bench.program.services().link.comopen(); }));
  QTest::keyClicks(bench.typing, QStringLiteral("abc"));
  EXPECT_EQ(bench.typing->content().size(), 0);
}

TEST(term_line, closing_the_window_under_a_flood_ends_it_at_once) {
  TermLine bench;
  std::atomic<bool> done = false;
  std::thread far_end([&] {
    while (!done) {
      bench.line.write_some(std::string(4096, 'x'));
    }
  });
  EXPECT_TRUE(wait_until([&] { return bench.received->content().size() > 20000; }, 10s));
  QElapsedTimer timer;
  timer.start();
  QTimer::singleShot(0, &bench.window, [&] { bench.window.close(); });
  EXPECT_TRUE(wait_until([&] { return !bench.program.services().link.comopen(); }, 10s));
  EXPECT_LT(timer.elapsed(), 500);
  done = true;
  far_end.join();
}

TEST(term_line, closing_the_main_window_while_the_full_screen_is_flooded_ends_everything_within_a_second) {
  std::chrono::milliseconds to_end{};
  const auto whole = time_of([&to_end] {
    TermLine bench;
    const FullTermWindow& full = bench.open_full_screen();
    const Flood flood(bench.line);
    to_end = time_to_end(bench.window, [&full] { return full.captured().size() > 20000; });
    EXPECT_GT(full.captured().size(), 20000U);
    EXPECT_FALSE(bench.program.services().link.comopen());
  });
  EXPECT_LT(to_end, 1s);
  EXPECT_LT(whole, 5s);
}

TEST(term_line, closing_the_window_during_a_long_paste_ends_it_within_a_second) {
  TermLine bench;
  const PtyListener far_end(bench.line, [](std::string_view /*bytes*/) {});
  constexpr int length = 1000000;
  QApplication::clipboard()->setText(QString(length, u'x'));
  QTest::keyClick(bench.typing, Qt::Key_Insert, Qt::ShiftModifier);
  const auto to_end = time_to_end(bench.window, [&bench] { return bench.typing->content().size() > 1000; });
  EXPECT_LT(to_end, 1s);
  EXPECT_FALSE(bench.program.services().link.comopen());
  EXPECT_GT(bench.typing->content().size(), 1000);
  EXPECT_LT(bench.typing->content().size(), length);
}

TEST(term_line, closing_the_window_during_a_paste_into_a_stalled_line_ends_it_within_a_second) {
  TermLine bench;
  const PtyStall stall(bench.line);
  QApplication::clipboard()->setText(QString(1000000, u'x'));
  const auto time = time_of([&bench] {
    QTest::keyClick(bench.typing, Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_LT(time_to_end(bench.window, [] { return true; }), 1s);
  });
  EXPECT_LT(time, 1s);
  EXPECT_FALSE(bench.program.services().link.comopen());
}
