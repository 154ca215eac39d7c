#include "link/click.h"

#include <exception>

void ClickRunner::run(const std::function<void()>& handler) {
  if (pump_.closing()) {
    return;
  }
  if (pump_.pausing()) {
    pump_.after_pause([this, handler] { run(handler); });
    return;
  }
  if (dialogs_.box_open()) {
    // An assistive client reaches past a box; the box is answered first all the same.
    dialogs_.after_box([this, handler] { run(handler); });
    return;
  }
  try {
    run_now(handler);
  } catch (const ProgramClosing&) {
    // The operation has been unwound; the event loop is about to end.
  }
}

void ClickRunner::run_now(const std::function<void()>& handler) {
  std::string failure;
  try {
    handler();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  if (!failure.empty()) {
    dialogs_.message(failure);
  }
}
