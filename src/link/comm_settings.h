#pragma once

#include <string>

enum class Parity { none, even, odd };

/// The technician's choices on the communication screen. Every exchange reads them afresh; they are
/// never saved, so that every run starts from the defaults below. One stop bit, no handshaking, always.
struct CommSettings {
  int port_number = 1;  ///< 1 to 5, the "Com Port" option
  int baud = 9600;      ///< 1200, 2400, 4800, 9600 or 19200 bits a second
  Parity parity = Parity::none;
  int data_bits = 8;                 ///< 7 or 8
  bool network_mode = false;         ///< true on a multi-drop network of addressed readers
  std::string reader_address = "0";  ///< as typed: 0 to 126, or 127 for the Global Address
};

/// The port's settings in the notation of serial drivers: "9600,N,8,1" with the defaults.
[[nodiscard]] std::string settings_string(const CommSettings& settings);
