#pragma once

#include "link/serial_port.h"
#include "support/test_pump.h"

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A serial port at virtual time. It keeps every write, and answers as the test says.
class FakePort : public SerialPort {
 public:
  explicit FakePort(TestPump& pump) : pump_(pump) { pump.attach(*this); }

  // --- What a test arranges -----------------------------------------------------------------------

  bool openable = true;
  bool writable = true;
  /// The next write of exactly these bytes is answered with `reply`, `delay` after it. Consumed by use.
  void answer(std::string_view written, std::string_view reply,
              std::chrono::milliseconds delay = std::chrono::milliseconds(15));
  /// Every write is handed to `responder`, which may call arrive().
  std::function<void(std::string_view written)> responder;
  /// These bytes arrive `delay` from now.
  void arrive(std::string_view bytes, std::chrono::milliseconds delay = std::chrono::milliseconds(0));
  void hang_up();

  // --- What a test looks at -----------------------------------------------------------------------

  std::vector<std::string> writes;       ///< one entry a write
  std::vector<std::string> opened_with;  ///< "port:settings" of every open() that was tried
  bool is_open = false;
  int discards = 0;
  int refused = 0;  ///< writes that were tried while it took none
  /// All that was written, in one piece.
  [[nodiscard]] std::string written() const;
  /// What has arrived and nobody took.
  [[nodiscard]] std::string waiting() const { return {received_.begin(), received_.end()}; }

  // --- SerialPort ---------------------------------------------------------------------------------

  [[nodiscard]] bool open(const CommSettings& settings) override;
  void close() override;
  bool write(std::string_view bytes) override;
  [[nodiscard]] std::size_t bytes_waiting() override { return received_.size(); }
  std::optional<char> read_char() override;
  void discard_received() override;
  [[nodiscard]] std::string device_of(int port_number) const override;
  [[nodiscard]] std::string open_error(int port_number) const override;

 private:
  struct Answer {
    std::string written;
    std::string reply;
    std::chrono::milliseconds delay;
  };

  TestPump& pump_;
  std::deque<Answer> answers_;
  std::deque<char> received_;
};
