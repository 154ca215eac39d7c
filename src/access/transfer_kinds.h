#pragma once

#include "access/access_file.h"
#include "link/timings.h"

#include <chrono>
#include <string>
#include <string_view>

// The transfers side by side. Each group is one operation; what tells its members apart stands here as data.
// The differences look like slips and are meant: readers, files and habits out there count on them.

// --- Uploads: a request, then one request a record until the reader answers "END" -----------------------

enum class PortCheck { before_dialog, after_dialog };
/// What a cancelled file dialog does: the name left in it may be used as if it had been chosen.
enum class OnCancel { use_name_in_dialog, end };
/// What a file that cannot be created or written does.
enum class OnFileFailure { go_on, end_silently };
/// When `uploading_on` is set. Set before the refusals (all readers addressed, no reader there), it stays set
/// after one: further uploads then do nothing, and clears refuse, until the program ends.
enum class FlagSet { after_refusals, before_refusals };
enum class ConnectionTest { none, made };
enum class EmptyReply { skipped, written };

struct UploadKind {
  std::string_view request;
  std::string_view record_request;
  std::string_view title;      ///< of the save dialog
  std::string_view file_name;  ///< proposed
  std::chrono::milliseconds reply_time_out;
  PortCheck port_check;
  OnCancel on_cancel;
  ConnectionTest connection_test;
  FlagSet flag_set;
  OnFileFailure on_file_failure;
  EmptyReply empty_reply;
  std::string (*line_of)(std::string_view reply);
};

[[nodiscard]] inline std::string unchanged_line(std::string_view reply) {
  return std::string{reply};
}

inline constexpr UploadKind access_list_upload{
    .request = "ur",
    .record_request = "u",
    .title = "Upload Access List File",
    .file_name = "uploadacc.txt",
    .reply_time_out = timings::access_record_reply,
    .port_check = PortCheck::after_dialog,
    .on_cancel = OnCancel::use_name_in_dialog,
    .connection_test = ConnectionTest::made,
    .flag_set = FlagSet::after_refusals,
    .on_file_failure = OnFileFailure::go_on,
    .empty_reply = EmptyReply::skipped,
    .line_of = uploaded_access_line,
};

inline constexpr UploadKind access_log_upload{
    .request = "lr",
    .record_request = "l",
    .title = "Upload Access Log",
    .file_name = "uploadlog.txt",
    .reply_time_out = timings::log_record_reply,
    .port_check = PortCheck::before_dialog,
    .on_cancel = OnCancel::use_name_in_dialog,
    .connection_test = ConnectionTest::none,
    .flag_set = FlagSet::after_refusals,
    .on_file_failure = OnFileFailure::go_on,
    .empty_reply = EmptyReply::skipped,
    .line_of = unchanged_line,
};

inline constexpr UploadKind collected_records_upload{
    .request = "lr",
    .record_request = "l",
    .title = "Upload Log",
    .file_name = "uploadlog.txt",
    .reply_time_out = timings::log_record_reply,
    .port_check = PortCheck::before_dialog,
    .on_cancel = OnCancel::end,
    .connection_test = ConnectionTest::made,
    .flag_set = FlagSet::before_refusals,
    .on_file_failure = OnFileFailure::end_silently,
    .empty_reply = EmptyReply::written,
    .line_of = unchanged_line,
};

// --- Downloads: one or more commands a line of a file ----------------------------------------------------

/// Whether the address is taken before or after the test for a connected reader. Taken before, the test
/// leaves out the Global Address, to which no reader answers; taken after, it does not.
enum class AddressTaken { before_connection_test, after_connection_test };
enum class BroadcastAck { none, after_each_command };

struct DownloadKind {
  std::string_view title;  ///< of the open dialog
  std::string_view file_name;
  AddressTaken address_taken;
  std::string_view warning_to_all;  ///< shown before a broadcast; empty: none
  std::chrono::milliseconds pause;  ///< after each command
  BroadcastAck broadcast_ack;
  std::chrono::milliseconds pause_after_broadcast_line;  ///< once more after a line's last command
};

inline constexpr DownloadKind access_list_download{
    .title = "Download Access List File",
    .file_name = "defaccess.txt",
    .address_taken = AddressTaken::before_connection_test,
    .warning_to_all = "Warning - you are downloading to all readers",
    .pause = timings::access_record_pause,
    .broadcast_ack = BroadcastAck::none,
    .pause_after_broadcast_line = {},
};

inline constexpr DownloadKind schedule_download{
    .title = "Download Schedule File",
    .file_name = "schedule.txt",
    .address_taken = AddressTaken::after_connection_test,
    .warning_to_all = {},
    .pause = timings::schedule_command_pause,
    .broadcast_ack = BroadcastAck::after_each_command,
    .pause_after_broadcast_line = timings::broadcast_schedule_pause,
};

// --- Clears: one command ---------------------------------------------------------------------------------

enum class FirstCheck { busy, port };
enum class OnTimeOut { message, message_and_hidden_status };

struct ClearKind {
  std::string_view command;
  std::string_view done;  ///< the success message, its blanks included
  FirstCheck first_check;
  ConnectionTest connection_test;
  OnTimeOut on_time_out;
};

inline constexpr ClearKind access_list_clear{
    .command = "cd",
    .done = "        Reader Access List Cleared         ",
    .first_check = FirstCheck::busy,
    .connection_test = ConnectionTest::made,
    .on_time_out = OnTimeOut::message,
};

inline constexpr ClearKind access_log_clear{
    .command = "cl",
    .done = "        Reader Log Data Cleared         ",
    .first_check = FirstCheck::busy,
    .connection_test = ConnectionTest::made,
    .on_time_out = OnTimeOut::message,
};

inline constexpr ClearKind collected_records_clear{
    .command = "cl",
    .done = "        Reader Log Data Cleared         ",
    .first_check = FirstCheck::port,
    .connection_test = ConnectionTest::none,
    .on_time_out = OnTimeOut::message_and_hidden_status,
};
