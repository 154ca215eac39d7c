#pragma once

#include "link/comm_settings.h"
#include "link/deadline.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/serial_port.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The exchange with one reader over the one serial port: opening it with the technician's choices,
/// addressing a reader, framing and sending a command, awaiting the acknowledge, collecting a reply.
/// Every wait yields to the event loop, so other clicks may run during it; nothing here locks.
class ReaderLink {
 public:
  ReaderLink(SerialPort& port, EventPump& pump, Dialogs& dialogs, const CommSettings& settings);
  ReaderLink(const ReaderLink&) = delete;
  ReaderLink& operator=(const ReaderLink&) = delete;
  ~ReaderLink();

  // --- The port -----------------------------------------------------------------------------------

  /// Opens the port with the choices as they stand. @return false on any failure; shows nothing.
  bool opencomm();
  void closecomm();
  /// Reopens the port after a choice has changed; shows "Unable to open comm port" when that fails.
  /// Does nothing as long as start-up has not opened the port.
  void restorecomm();
  /// @return whether the port is open; shows "Comm port is not open" when it is not.
  [[nodiscard]] bool checkcom();
  /// Opens the port for the first time. Fails silently, and then restorecomm() stays without effect
  /// for the rest of the run: that is meant.
  void open_at_start_up();
  [[nodiscard]] bool comopen() const { return comopen_; }

  /// Reads out and drops the characters that wait.
  void clearcomm();
  /// Throws away the receive buffer.
  void discard_received();
  /// Both of the above, in the order that comes before an exchange,
  void discard_then_clear();
  /// and in the one that comes after it.
  void clear_then_discard();

  std::size_t bytes_waiting() { return port_.bytes_waiting(); }
  std::optional<char> read_char() { return port_.read_char(); }
  /// Writes bytes as they are. @return false when the line did not take them in time.
  bool write(std::string_view bytes) { return port_.write(bytes); }

  // --- The reader it speaks to --------------------------------------------------------------------

  /// Takes network mode and reader address from the choices. @return false after showing "A Network
  /// address has not been set" when the address is blank (network mode on or off) or not 0 to 127.
  [[nodiscard]] bool setnetaddr();
  /// The network-mode option has been chosen; takes effect at once.
  void set_network_mode(bool on) { network_mode_ = on; }
  [[nodiscard]] bool network_mode() const { return network_mode_; }
  /// Reader address + 128 as the last setnetaddr() found it; 0 before the first.
  [[nodiscard]] std::uint8_t address_byte() const { return address_byte_; }
  /// Network mode on, and all readers addressed at once.
  [[nodiscard]] bool to_all_readers() const;

  // --- The exchange -------------------------------------------------------------------------------

  /// The frame of a command for the reader addressed, plain or networked.
  [[nodiscard]] std::string frame(std::string_view command) const;
  /// Writes the frame of a command, in one write.
  bool write_frame(std::string_view command) { return port_.write(frame(command)); }
  /// Writes one ACK. @return false when the line did not take it.
  bool write_ack();

  /// Sends a command. In network mode with `wait_for_acknowledge` it pauses 200 ms and requires one
  /// ACK, or shows "Reader does not acknowledge command". The same text tells that the line took no bytes.
  /// @return the command-accepted flag.
  bool send_command(std::string_view command, bool wait_for_acknowledge);
  [[nodiscard]] bool command_accepted() const { return command_accepted_; }

  /// Awaits an ACK for 100 polls of the port; other characters are dropped. Shows nothing.
  [[nodiscard]] bool getack();

  /// Collects one reply. Shows nothing.
  /// @param response what was collected; on a network without its lead-in and end characters. After a
  ///     failure it holds what had come until then.
  /// @param maximum_length characters after which the reply is taken as complete. On a network such a
  ///     reply still loses its first and its last character: that is meant.
  /// @param time_out of silence before any one character
  /// @param send_ack acknowledges a network reply; without effect on a plain line
  /// @param doubled_terminator the end character may be data: it is, when it comes twice
  [[nodiscard]] bool getinput(std::string& response, int maximum_length, std::chrono::milliseconds time_out,
                              bool send_ack, bool doubled_terminator);
  /// The text of the last reply that a screen asked for.
  [[nodiscard]] std::string& last_response() { return last_response_; }

  /// Asks the reader for its identification. @return whether at least 10 characters came.
  [[nodiscard]] bool reader_connected();
  /// The same, and shows "Reader is not Connected" when it is not.
  [[nodiscard]] bool require_reader();
  /// The link does not detect password protection: always false.
  [[nodiscard]] static bool reader_protected() { return false; }

  void commerror();
  void notconnected();
  void protectedbox();

 private:
  bool collect_network_reply(std::string& response, int maximum_length, Deadline& deadline, bool send_ack,
                             bool doubled_terminator);
  bool collect_plain_reply(std::string& response, int maximum_length, Deadline& deadline,
                           bool doubled_terminator);
  std::optional<char> await_char(Deadline& deadline);
  std::optional<char> char_after_terminator();

  SerialPort& port_;
  EventPump& pump_;
  Dialogs& dialogs_;
  const CommSettings& settings_;
  bool comopen_ = false;
  bool starting_up_ = true;
  bool network_mode_ = false;
  std::uint8_t address_byte_ = 0;
  bool command_accepted_ = false;
  std::string last_response_;
};
