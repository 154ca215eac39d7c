#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <set>

/// Thrown by the pump and by the dialogs once the program is being closed. It unwinds the running
/// operation up to the click that started it, where it ends; no operation catches it.
class ProgramClosing {};

/// A moment of the computer's own clock, as the wall shows it.
struct LocalTime {
  int year = 2000;
  int month = 1;        ///< 1 to 12
  int day = 1;          ///< 1 to 31
  int hour = 0;         ///< 0 to 23
  int minute = 0;       ///< 0 to 59
  int second = 0;       ///< 0 to 59
  int day_of_week = 1;  ///< 1 Monday to 7 Sunday
};

/// A timer that ticks until it is stopped. Ticks are held back while the pump pauses.
class Ticker {
 public:
  Ticker() = default;
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;
  virtual ~Ticker() = default;
  virtual void start() = 0;
  virtual void stop() = 0;
  [[nodiscard]] virtual bool running() const = 0;
};

/// What ends a yield before its 10 ms are over.
enum class Wake {
  byte_or_deadline,  ///< a character waits at the port, or a deadline has come
  deadline,          ///< only a deadline: for waits in which somebody else reads the port
};

/// The event loop as the operations see it. They wait by polling: yield, look, yield again.
class EventPump {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  static constexpr std::chrono::milliseconds longest_yield{10};

  EventPump() = default;
  EventPump(const EventPump&) = delete;
  EventPump& operator=(const EventPump&) = delete;
  virtual ~EventPump() = default;

  /// Processes clicks, keys, timers and repaints as they come, for at most 10 ms. Only what `wake` names
  /// ends it early: the mouse never uses up a count of polls.
  /// @throws ProgramClosing
  virtual void yield(Wake wake = Wake::byte_or_deadline) = 0;

  /// Pauses. Clicks, keys, timers and received bytes are held back until it ends; the window still paints.
  /// @throws ProgramClosing as soon as the program is closed, without waiting for the end.
  virtual void sleep(std::chrono::milliseconds pause) = 0;

  /// True while sleep() runs: whatever reaches the program then waits for its end.
  [[nodiscard]] virtual bool pausing() const = 0;
  /// Runs `action` from the event loop as soon as no pause runs.
  virtual void after_pause(std::function<void()> action) = 0;

  [[nodiscard]] virtual TimePoint now() const = 0;
  [[nodiscard]] virtual LocalTime local_time() const = 0;

  /// A timer that calls `on_tick` from the event loop, at first one `interval` after its start.
  [[nodiscard]] virtual std::unique_ptr<Ticker> make_ticker(std::chrono::milliseconds interval,
                                                            std::function<void()> on_tick) = 0;

  /// Makes every wait throw ProgramClosing from now on.
  virtual void close_program() { closing_ = true; }
  [[nodiscard]] bool closing() const { return closing_; }
  void throw_if_closing() const {
    if (closing_) {
      throw ProgramClosing{};
    }
  }

 protected:
  /// The end of a yield that begins now: 10 ms away, or the next deadline if that comes first.
  [[nodiscard]] TimePoint end_of_yield() const;

 private:
  friend class Deadline;
  std::multiset<TimePoint> deadlines_;
  bool closing_ = false;
};
