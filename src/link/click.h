#pragma once

#include "link/dialogs.h"
#include "link/event_pump.h"

#include <functional>
#include <stdexcept>

/// Ends the running click with a box that shows the text (UTF-8): "Overflow", "Type mismatch",
/// "File not found: …" and what else a value or a file makes impossible.
class ClickError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs what a click, a key or a choice stands for. The one place where a handler's failure ends: a
/// ClickError, and any other exception that the standard library throws, becomes its box, the closing of the
/// program ends it silently, and what arrives during a pause or behind an open box (an assistive client's
/// click, say) waits for its end.
class ClickRunner {
 public:
  ClickRunner(EventPump& pump, Dialogs& dialogs) : pump_(pump), dialogs_(dialogs) {}

  void run(const std::function<void()>& handler);

 private:
  void run_now(const std::function<void()>& handler);

  EventPump& pump_;
  Dialogs& dialogs_;
};
