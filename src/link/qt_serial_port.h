#pragma once

#include "link/serial_port.h"

#include <QSerialPort>

#include <array>
#include <chrono>
#include <memory>

/// The real serial port.
class QtSerialPort : public SerialPort {
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  [[nodiscard]] bool open(const CommSettings& settings) override;
  void close() override;
  bool write(std::string_view bytes) override;
  [[nodiscard]] std::size_t bytes_waiting() override;
  std::optional<char> read_char() override;
  void discard_received() override;
  [[nodiscard]] std::string device_of(int port_number) const override;
  [[nodiscard]] std::string open_error(int port_number) const override;

 private:
  void apply(const CommSettings& settings);
  [[nodiscard]] bool wait_until_written(std::chrono::steady_clock::time_point end);
  void hung_up();

  QSerialPort port_;
  std::unique_ptr<QObject> hang_up_watch_;
  std::array<std::string, 5> open_errors_;  ///< by port number less one
};
