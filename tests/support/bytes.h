#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

/// The bytes of a literal, NUL included: "\x02" "V"_bytes.
inline std::string operator""_bytes(const char* text, std::size_t length) {
  return {text, length};
}

/// Bytes as hexadecimal pairs with the visible characters beside them, sixteen a row.
inline std::string hex_dump(std::string_view bytes) {
  std::string dump;
  for (std::size_t row = 0; row < bytes.size(); row += 16) {
    std::string visible;
    for (const char byte : bytes.substr(row, 16)) {
      char pair[4];
      std::snprintf(pair, sizeof pair, "%02X ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
      dump += pair;
      visible += byte >= ' ' && byte <= '~' ? byte : '.';
    }
    dump += " " + visible + "\n";
  }
  return dump;
}

/// Whole byte strings compared; a difference is shown as two hex dumps.
inline testing::AssertionResult bytes_equal(std::string_view actual, std::string_view expected) {
  if (actual == expected) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "\nactual (" << actual.size() << "):\n"
                                     << hex_dump(actual) << "expected (" << expected.size() << "):\n"
                                     << hex_dump(expected);
}
