#pragma once

#include <string_view>

/// The fixed texts of the link's boxes.
namespace messages {

inline constexpr std::string_view unable_to_open = "Unable to open comm port";
inline constexpr std::string_view port_not_open = "Comm port is not open";
inline constexpr std::string_view address_not_set = "A Network address has not been set";
inline constexpr std::string_view no_acknowledge = "Reader does not acknowledge command";
inline constexpr std::string_view comm_error =
    "Error communicating with reader\rMake sure reader is connected and powered";
inline constexpr std::string_view error_communicating = "Error communicating with reader";
inline constexpr std::string_view not_connected = "Reader is not Connected";
inline constexpr std::string_view password_protected = "Invalid Function - Reader is Password Protected";
inline constexpr std::string_view timed_out = "Reader timed out";
inline constexpr std::string_view error_reading = "error reading from reader";
inline constexpr std::string_view no_reading_from_all = "Cannot read from address 127";
inline constexpr std::string_view date_time_set = "Date/Time set in reader";

}  // namespace messages
