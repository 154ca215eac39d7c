#include "link/qt_event_pump.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>

#include <algorithm>
#include <thread>
#include <utility>

namespace {

/// A ticker on the event loop. The first tick that falls into a pause comes after it, and it stands
/// meanwhile.
class QtTicker : public Ticker {
 public:
  QtTicker(EventPump& pump, std::chrono::milliseconds interval, std::function<void()> on_tick)
      : pump_(pump), on_tick_(std::move(on_tick)) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(interval);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { due(); });
  }

  void start() override {
    held_tick_.reset();
    timer_.start();
  }
  void stop() override {
    held_tick_.reset();
    timer_.stop();
  }
  [[nodiscard]] bool running() const override { return timer_.isActive() || held_tick_; }

 private:
  void due() {
    if (!pump_.pausing()) {
      tick();
    } else {
      timer_.stop();
      held_tick_ = std::make_shared<HeldTick>();
      pump_.after_pause([this, held = std::weak_ptr(held_tick_)] {
        // Gone with the ticker, and dropped when it was stopped or started anew meanwhile.
        if (held.lock()) {
          start();
          tick();
        }
      });
    }
  }

  void tick() {
    try {
      on_tick_();
    } catch (const ProgramClosing&) {
      // What the tick had begun is unwound; the event loop is about to end.
    }
  }

  struct HeldTick {};

  EventPump& pump_;
  std::function<void()> on_tick_;
  QTimer timer_;
  std::shared_ptr<HeldTick> held_tick_;
};

}  // namespace

QtEventPump::QtEventPump(SerialPort& port) : port_(port) {
  alarm_.setTimerType(Qt::PreciseTimer);
  alarm_.setSingleShot(true);
}

/// One turn of the event loop that waits for events, until `end` at the latest.
void QtEventPump::process_events_until(TimePoint end) {
  // Rounded up, so that the last turn does not spin through the last fraction of a millisecond.
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now());
  alarm_.start(std::max(left, std::chrono::milliseconds(0)));
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEventPump::yield(Wake wake) {
  throw_if_closing();
  const auto ended = [this, wake] { return wake == Wake::byte_or_deadline && port_.bytes_waiting() > 0; };
  const TimePoint end = end_of_yield();
  QCoreApplication::processEvents();
  while (!closing() && !ended() && now() < end) {
    process_events_until(end);
  }
  throw_if_closing();
}

void QtEventPump::sleep(std::chrono::milliseconds pause) {
  throw_if_closing();
  const TimePoint end = now() + pause;
  hold_.begin();
  // However short the pause, what has happened meanwhile is noticed: the closing of the window, above all.
  QCoreApplication::processEvents();
  // The alarm knows whole milliseconds only, and an event in the middle of a pause would leave it up to one
  // too long: a hundred commands would feel it. So the last fraction is slept through.
  for (auto left = end - now(); !closing() && left.count() > 0; left = end - now()) {
    if (left > std::chrono::milliseconds(1)) {
      process_events_until(end - std::chrono::milliseconds(1));
    } else {
      std::this_thread::sleep_for(left);
    }
  }
  end_pause();
  throw_if_closing();
}

void QtEventPump::end_pause() {
  hold_.end();
  if (!pausing()) {
    for (auto& action : std::exchange(waiting_, {})) {
      after_pause(std::move(action));
    }
  }
}

void QtEventPump::after_pause(std::function<void()> action) {
  if (pausing()) {
    waiting_.push_back(std::move(action));
  } else {
    QMetaObject::invokeMethod(
        this, [this, action = std::move(action)] { pausing() ? after_pause(action) : action(); },
        Qt::QueuedConnection);
  }
}

LocalTime QtEventPump::local_time() const {
  const QDateTime moment = QDateTime::currentDateTime();
  const QDate date = moment.date();
  const QTime time = moment.time();
  return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second(), date.dayOfWeek()};
}

std::unique_ptr<Ticker> QtEventPump::make_ticker(std::chrono::milliseconds interval,
                                                 std::function<void()> on_tick) {
  return std::make_unique<QtTicker>(*this, interval, std::move(on_tick));
}

void QtEventPump::close_program() {
  EventPump::close_program();
  // A waiting turn of the event loop must look at the flag at once.
  QMetaObject::invokeMethod(
      this, [] {}, Qt::QueuedConnection);
}
