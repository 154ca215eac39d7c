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

/// The address byte of the Global Address 127, which every reader obeys and none answers.
inline constexpr std::uint8_t global_address_byte = 0xFF;

/// NUL followed by `text`: the introducer that most one-line commands begin with.
[[nodiscard]] std::string introduced(std::string_view text);

/// A command on a plain line: the command, CR.
[[nodiscard]] std::string plain_frame(std::string_view command);
/// A command on a network: address byte (reader address + 128), STX, the command, ETX.
[[nodiscard]] std::string network_frame(std::uint8_t address_byte, std::string_view command);
