#include "link/comm_settings.h"

std::string settings_string(const CommSettings& settings) {
  std::string text = std::to_string(settings.baud) + ",";
  switch (settings.parity) {
    case Parity::none:
      text += "N,";
      break;
    case Parity::even:
      text += "E,";
      break;
    case Parity::odd:
      text += "O,";
      break;
  }
  return text + (settings.data_bits == 7 ? "7,1" : "8,1");
}
