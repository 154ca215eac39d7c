#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Control characters of the readers' protocol.
namespace wire {
inline constexpr char nul = '\x00';  ///< introduces many commands; sent as part of them
inline constexpr char soh = '\x01';
inline constexpr char stx = '\x02';  ///< begins a network frame, after the address byte
inline constexpr char etx = '\x03';  ///< ends a network frame, in both directions
inline constexpr char eot = '\x04';
inline constexpr char ack = '\x06';  ///< accepts a network command, or a network reply
inline constexpr char cr = '\x0D';   ///< ends a command and a reply on a plain line
}  // namespace wire

inline constexpr int highest_address = 126;  ///< of a reader; the lowest is 0
/// The Global Address, which every reader of a network obeys and none answers.
inline constexpr int global_address = 127;

/// What stands for an address on the wire.
[[nodiscard]] constexpr std::uint8_t address_byte_of(int address) {
  return static_cast<std::uint8_t>(address + 128);
}

/// NUL followed by `text`: the introducer that most one-line commands begin with.
[[nodiscard]] std::string introduced(std::string_view text);

/// A command on a plain line: the command, CR.
[[nodiscard]] std::string plain_frame(std::string_view command);
/// A command on a network: address byte, STX, the command, ETX.
[[nodiscard]] std::string network_frame(std::uint8_t address_byte, std::string_view command);
