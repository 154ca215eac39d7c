#pragma once

#include <chrono>

/// Every fixed wait and time-out of the operations, and what it is for. How long a yield may last is the
/// event pump's own.
namespace timings {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

// The exchange with one reader.
inline constexpr milliseconds acknowledge_pause = 200ms;  ///< send_command: before it looks for the ACK
inline constexpr milliseconds doubled_terminator_pause = 100ms;  ///< getinput: for a second end character
inline constexpr int acknowledge_polls = 100;                ///< getack: a count, not a time, and meant so
inline constexpr milliseconds presence_reply = 100ms;        ///< reader_connected: silence before a character
inline constexpr milliseconds identification_reply = 250ms;  ///< "Reader Identification": the same

// The clocks.
inline constexpr milliseconds clock_tick = 1000ms;  ///< of the PC clock on the screens
inline constexpr milliseconds clock_reply = 100ms;  ///< readdt: silence before a character

// The transfers of access lists, schedules, logs and collected records.
inline constexpr milliseconds transfer_reply = 5000ms;           ///< from a command to the reader's answer
inline constexpr milliseconds access_record_pause = 250ms;       ///< after each record of an access list
inline constexpr milliseconds schedule_command_pause = 50ms;     ///< after each command of a schedule
inline constexpr milliseconds broadcast_schedule_pause = 250ms;  ///< more, after a schedule to all readers
inline constexpr milliseconds upload_acknowledge_pause = 100ms;  ///< from an upload's request to its ACK
inline constexpr milliseconds access_record_reply = 1000ms;      ///< uploads: silence before a character
inline constexpr milliseconds log_record_reply = 250ms;          ///< the same, of the logs
inline constexpr milliseconds clear_pause = 250ms;               ///< after a clear
inline constexpr milliseconds rest_of_reply_poll = 1ms;          ///< between looks at a reply come in part

// The protocol test.
inline constexpr milliseconds first_look_at_poll = 1ms;   ///< ends the first yield when the time-out is 0
inline constexpr milliseconds rest_of_poll_reply = 30ms;  ///< after the first character of a poll's reply

// The setup of the Orin and Kesh readers.
inline constexpr milliseconds setup_pause = 100ms;  ///< after a setting that nobody acknowledges

// The terminal.
inline constexpr milliseconds terminal_tick = 1ms;      ///< from an arriving byte to its display
inline constexpr milliseconds full_screen_tick = 20ms;  ///< the same in the full-screen terminal

// The serial line.
inline constexpr milliseconds write_margin = 500ms;  ///< beyond what a write needs at the port's speed

}  // namespace timings
