#pragma once

#include "link/event_pump.h"

#include <chrono>
#include <functional>
#include <map>
#include <vector>

class SerialPort;

/// An event pump whose clock is virtual: waits cost no time and end on the same poll every time. What a
/// test schedules with after() happens inside the waits, as clicks and bytes do in the real program.
class TestPump : public EventPump {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Yields end when a byte waits at this port.
  void attach(SerialPort& port) { port_ = &port; }

  /// Runs `action` at `delay` from now: inside a yield, or after the pause that covers that moment when
  /// `held_by_pause` says so (clicks, keys and timers; arriving bytes come through).
  void after(std::chrono::nanoseconds delay, std::function<void()> action, bool held_by_pause = false);
  /// Lets time pass outside any operation, as the idle event loop does.
  void idle(Milliseconds time);
  [[nodiscard]] Milliseconds elapsed() const {
    return std::chrono::duration_cast<Milliseconds>(now_ - start_);
  }

  LocalTime clock;                   ///< what local_time() gives; stands still unless a test moves it
  std::vector<Milliseconds> sleeps;  ///< every pause, in order
  int yields = 0;
  int running_tickers = 0;  ///< started and neither stopped nor gone

  void yield(Wake wake = Wake::byte_or_deadline) override;
  void sleep(Milliseconds pause) override;
  [[nodiscard]] bool pausing() const override { return pauses_ > 0; }
  void after_pause(std::function<void()> action) override { after(Milliseconds(0), std::move(action), true); }
  [[nodiscard]] TimePoint now() const override { return now_; }
  [[nodiscard]] LocalTime local_time() const override { return clock; }
  [[nodiscard]] std::unique_ptr<Ticker> make_ticker(Milliseconds interval,
                                                    std::function<void()> on_tick) override;

 private:
  struct Event {
    std::function<void()> action;
    bool held_by_pause;
  };

  /// Runs what is due up to `end`; stops early when `ended` says so. Leaves the clock at `end` otherwise.
  void advance(TimePoint end, const std::function<bool()>& ended);

  TimePoint start_{};
  TimePoint now_{};
  std::multimap<TimePoint, Event> events_;
  SerialPort* port_ = nullptr;
  int pauses_ = 0;
};
