#pragma once

#include "link/comm_settings.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The one serial port of the program: 8-bit code units, polled, read one character at a time.
/// Nothing here shows a message; callers judge by the results.
class SerialPort {
 public:
  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;
  virtual ~SerialPort() = default;

  /// Opens the port of `settings.port_number`, closing an open one first.
  /// @return false when the device is missing, busy or forbidden; open_error() then tells why.
  [[nodiscard]] virtual bool open(const CommSettings& settings) = 0;
  virtual void close() = 0;

  /// Sends `bytes`; they have left the program when the call returns.
  /// @return false when the port is closed or the line does not take them within the time that their
  /// number needs at the port's speed, plus half a second; what is left of them is then dropped.
  virtual bool write(std::string_view bytes) = 0;

  /// How many received characters wait, true also right after a blocking pause; 0 on a closed port.
  [[nodiscard]] virtual std::size_t bytes_waiting() = 0;
  /// Takes the oldest waiting character; nothing when none waits.
  virtual std::optional<char> read_char() = 0;
  /// Throws away all that has been received, in the program and in the system.
  virtual void discard_received() = 0;

  /// The device that a port number (1 to 5) stands for, in the system's own words; empty when none does.
  [[nodiscard]] virtual std::string device_of(int port_number) const = 0;
  /// Why the last open() of this port number failed, in the system's words; empty when it did not.
  [[nodiscard]] virtual std::string open_error(int port_number) const = 0;

  /// Called from the event loop when characters have arrived. It may read; it must not wait.
  std::function<void()> on_arrival;
  /// Called from the event loop, once, after the line has gone (an adapter pulled out).
  std::function<void()> on_hang_up;
};
