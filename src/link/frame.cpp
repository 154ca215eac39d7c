#include "link/frame.h"

std::string introduced(std::string_view text) {
  std::string command(1, wire::nul);
  command += text;
  return command;
}

std::string plain_frame(std::string_view command) {
  std::string frame(command);
  frame += wire::cr;
  return frame;
}

std::string network_frame(std::uint8_t address_byte, std::string_view command) {
  std::string frame{static_cast<char>(address_byte), wire::stx};
  frame += command;
  frame += wire::etx;
  return frame;
}
