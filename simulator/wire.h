#pragma once

namespace readersim {

// The control characters of frames and answers.
inline constexpr char soh = '\x01';
inline constexpr char stx = '\x02';
inline constexpr char etx = '\x03';
inline constexpr char eot = '\x04';
inline constexpr char ack = '\x06';
inline constexpr char cr = '\r';
inline constexpr char nak = '\x15';

// Each reader has one of the addresses 0 to 126; on a network all hear what is sent to 127.
inline constexpr int highest_address = 126;
inline constexpr int everybody = 127;

/// An address travels as a byte of its own, from this one on.
inline constexpr int address_mark = 0x80;
[[nodiscard]] constexpr bool is_address_byte(char byte) {
  return static_cast<unsigned char>(byte) >= address_mark;
}
[[nodiscard]] constexpr char address_byte(int address) {
  return static_cast<char>(address + address_mark);
}
[[nodiscard]] constexpr int address_of(char byte) {
  return static_cast<unsigned char>(byte) - address_mark;
}

}  // namespace readersim
