#pragma once

#include "link/serial_port.h"
#include "simulator/bench.h"
#include "support/test_pump.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A serial port with simulated readers at its far end, at virtual time: what a reader does and says, spoilt
/// answers and a line that hangs up included, but no device and no waiting. Every Com Port is this line.
class SimPort : public SerialPort {
 public:
  /// One reader on a plain line, or those of a network, as the options say.
  SimPort(TestPump& pump, const readersim::Options& options);
  SimPort(TestPump& pump, readersim::Family family);

  // --- What a test arranges and looks at ----------------------------------------------------------

  bool is_open = false;
  std::vector<std::string> writes;  ///< one entry a write
  /// All that was written, in one piece.
  [[nodiscard]] std::string written() const;
  /// Called with every write before the readers hear it.
  std::function<void(std::string_view bytes)> before_write;
  [[nodiscard]] readersim::Line& line() { return bench_.line(); }
  /// The reader at that address as it is now; it may be changed.
  [[nodiscard]] readersim::Reader& reader(int address);
  /// A command to the simulator's console, "fault 5 drop-ack 3"; a mistake in it fails the test.
  std::string console(std::string_view command);
  /// The line is there again after a hang-up.
  void replug() { console("replug"); }
  /// The time on the readers' side.
  [[nodiscard]] readersim::TimePoint now() const;
  /// What has arrived and nobody took.
  [[nodiscard]] const std::string& waiting() const { return received_; }

  // --- SerialPort ---------------------------------------------------------------------------------

  [[nodiscard]] bool open(const CommSettings& settings) override;
  void close() override;
  bool write(std::string_view bytes) override;
  [[nodiscard]] std::size_t bytes_waiting() override { return received_.size(); }
  std::optional<char> read_char() override;
  void discard_received() override { received_.clear(); }
  [[nodiscard]] std::string device_of(int port_number) const override;
  [[nodiscard]] std::string open_error(int port_number) const override;

 private:
  /// Takes what the readers have said by now, and comes again when they say more.
  void listen();
  void listen_later();
  void notice_hang_up();

  TestPump& pump_;
  readersim::Bench bench_;
  std::string received_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};
