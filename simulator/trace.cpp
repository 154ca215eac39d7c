#include "simulator/trace.h"

#include <array>

namespace readersim {
namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

std::string two_digits(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return {digits[code >> 4U], digits[code & 0xFU]};
}

std::string name(int address) {
  if (address == Event::nobody) {
    return "---";
  }
  if (address == Event::everybody) {
    return "all";
  }
  std::string text = std::to_string(address);
  return std::string(3 - text.size(), '0') + text;
}

}  // namespace

std::string hex(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    text.append(text.empty() ? "" : " ").append(two_digits(byte));
  }
  return text;
}

std::string visible(std::string_view bytes) {
  constexpr std::array names{"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT",  "LF",
                             "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
                             "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < names.size()) {
      text.append("<").append(names.at(code)).append(">");
    } else if (code < 0x7F) {
      text += byte;
    } else {
      text.append("<").append(two_digits(byte)).append(">");
    }
  }
  return text;
}

std::string describe(const Event& event) {
  switch (event.kind) {
    case Event::Kind::heard:
      return "pc > " + name(event.address) + "  " + hex(event.bytes) + "  " + visible(event.bytes) + "  " +
             event.meaning;
    case Event::Kind::sent:
      return name(event.address) + " > pc  " + hex(event.bytes) + "  " + visible(event.bytes) + "  " +
             event.meaning;
    default:
      return event.address == Event::nobody ? event.meaning
                                            : "reader " + name(event.address) + ": " + event.meaning;
  }
}

}  // namespace readersim
