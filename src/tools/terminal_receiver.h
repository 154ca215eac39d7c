#pragma once

#include "link/event_pump.h"
#include "link/serial_port.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What a tick of the receiver has to show: the first line continues the display's last one, each further
/// line begins a new one. Bytes of the terminals' code page; control characters stand for themselves.
using ReceivedLines = std::vector<std::string>;

/// The receive side of the terminal, which also feeds the hardware test's output box: an arriving byte
/// arms it, a millisecond later it shows what has come. It costs nothing while the line is silent.
class TerminalReceiver {
 public:
  using Display = std::function<void(const ReceivedLines& lines)>;

  /// @param port is listened to from now on; it must outlive the receiver.
  TerminalReceiver(SerialPort& port, EventPump& pump);
  ~TerminalReceiver();
  TerminalReceiver(const TerminalReceiver&) = delete;
  TerminalReceiver& operator=(const TerminalReceiver&) = delete;

  /// Shows what arrives (and what waits already) until stop().
  void start(Display display);
  void stop();
  [[nodiscard]] bool running() const { return running_; }

  /// The full-screen terminal has the port: it reads, and nothing is shown here.
  void set_screenactive(bool active);
  [[nodiscard]] bool screenactive() const { return screenactive_; }
  /// Called when bytes arrive while the full-screen terminal has the port.
  void set_full_screen_listener(std::function<void()> listener) { full_screen_ = std::move(listener); }

 private:
  void arrived();
  void arm_when_waiting();
  void tick();

  SerialPort& port_;
  std::unique_ptr<Ticker> ticker_;
  Display display_;
  std::function<void()> full_screen_;
  bool running_ = false;
  bool screenactive_ = false;
};

/// How the terminal shows one received byte: CR begins a line; a control character becomes "^" and the
/// character 48 codes above it, then itself; NUL is preceded by "^@". Not as typed characters are shown:
/// that is meant.
void append_received(ReceivedLines& lines, char byte);
