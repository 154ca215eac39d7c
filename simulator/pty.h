#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// A pseudo-terminal whose other end a program opens as its serial port. It is raw, it outlives the
/// program closing and reopening it, and it can be unplugged and plugged in again. Whoever wants to
/// know where one may be found gets a symbolic link that is always right.
class PseudoTerminal {
 public:
  /// Plugs in at once. Keeps a symbolic link there unless `link` is empty; a link that already is
  /// there is replaced, any other file is left alone. Throws std::system_error.
  explicit PseudoTerminal(std::string link);
  /// Unplugs and removes the link.
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  void plug();
  /// Hangs up on whoever has it open, and takes the link away.
  void unplug();
  [[nodiscard]] bool plugged() const;
  /// The device to open, another one after each plug(); "" while unplugged.
  [[nodiscard]] const std::string& path() const;

  /// Descriptors that become readable when there is something to read() or to notice.
  [[nodiscard]] std::vector<int> descriptors() const;
  /// The descriptor to wait on until it takes more bytes; nothing when none are left over.
  [[nodiscard]] std::optional<int> stuffed() const;
  /// What the program has sent; "" when nothing. Never waits.
  [[nodiscard]] std::string read();
  /// Sends bytes to the program, those it does not take now as soon as it does. While no program has
  /// the line open they are lost, as on a real line. Never waits.
  void write(std::string_view bytes);
  /// Looks whether programs opened or closed the line since the last call; "" or a text for people.
  [[nodiscard]] std::string notice();
  /// The baud rate the program has set, 0 when it is an odd one.
  [[nodiscard]] int host_baud() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace readersim
