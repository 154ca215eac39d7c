#pragma once

#include <chrono>

/// Every fixed wait and time-out of the program, and what it is for.
namespace timings {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

// The exchange with one reader.
inline constexpr milliseconds acknowledge_pause = 200ms;  ///< send_command: before it looks for the ACK
inline constexpr milliseconds doubled_terminator_pause = 100ms;  ///< getinput: for a second end character
inline constexpr int acknowledge_polls = 100;                ///< getack: a count, not a time, and meant so
inline constexpr milliseconds presence_reply = 100ms;        ///< reader_connected: silence before a character
inline constexpr milliseconds identification_reply = 250ms;  ///< "Reader Identification": the same

// The terminal.
inline constexpr milliseconds terminal_tick = 1ms;  ///< from an arriving byte to its display

// The serial line.
inline constexpr milliseconds write_margin = 1000ms;  ///< beyond what a write needs at the port's speed

}  // namespace timings
