#pragma once

#include "link/event_pump.h"
#include "link/reader_link.h"
#include "tools/profile.h"

#include <chrono>
#include <string_view>

/// What a running hardware test shows. The readers' replies come to the screen by themselves.
class HardtestDisplay {
 public:
  HardtestDisplay() = default;
  HardtestDisplay(const HardtestDisplay&) = delete;
  HardtestDisplay& operator=(const HardtestDisplay&) = delete;
  virtual ~HardtestDisplay() = default;

  /// The current profile's path as it stands now.
  virtual void show_profile() = 0;
  virtual void clear_steps() = 0;
  /// Adds the caption of a step that is about to be sent, and shows it at once.
  virtual void add_step(std::string_view caption) = 0;
  virtual void clear_output() = 0;
  virtual void repaint_output() = 0;
};

/// Sends the steps of a profile, with a pause after each. It compares nothing: the operator judges the
/// replies.
class HardwareTest {
 public:
  HardwareTest(ReaderLink& link, EventPump& pump, CurrentProfile& profile, HardtestDisplay& display)
      : link_(link), pump_(pump), profile_(profile), display_(display) {}

  /// Runs the profile once, or again and again with `continuous_delay` between the runs when that is not 0.
  /// Returns when the test has ended. Called again during a test, it starts the new one in its place. A port
  /// that is closed under it ends the test.
  /// Shows "Comm port is not open" and "A Network address has not been set".
  /// @throws ClickError when the profile cannot be loaded
  void start(std::chrono::milliseconds continuous_delay);
  /// Takes effect after the current step.
  void stop() { stop_requested_ = true; }
  [[nodiscard]] bool running() const { return running_; }

 private:
  void hardtest(std::chrono::milliseconds continuous_delay);
  void run_until_stopped();
  void run();
  void send(std::string_view command);
  void yield_to_the_receiver();
  [[nodiscard]] bool must_end_run() const;

  ReaderLink& link_;
  EventPump& pump_;
  CurrentProfile& profile_;
  HardtestDisplay& display_;
  std::chrono::milliseconds continuous_delay_{};
  bool stop_requested_ = false;
  bool running_ = false;
  bool start_over_ = false;
};

/// The pause after a step: the number that the wait line begins with, rounded to whole milliseconds; 0 for
/// a line without one, and for one below 0.
[[nodiscard]] std::chrono::milliseconds step_wait(std::string_view line);
