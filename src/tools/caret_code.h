#pragma once

#include <string>

/// Whether a byte is a control character: below the blank.
[[nodiscard]] constexpr bool is_control(char byte) {
  return static_cast<unsigned char>(byte) < 0x20;
}

/// A control character as it is shown: "^" and the character 64 above it, ^B for STX. The receiving box of
/// the terminal screen counts otherwise.
[[nodiscard]] inline std::string caret_code(char control) {
  return {'^', static_cast<char>(control + 64)};
}
