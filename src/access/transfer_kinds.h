#pragma once

#include <chrono>
#include <string>
#include <string_view>

// What tells the transfers apart, as data: each group is one operation, its members stand side by side in
// transfer_kinds.cpp.

// --- Uploads: a request, then one request a record until the reader answers "END" -----------------------

enum class PortCheck { before_dialog, after_dialog };
/// What a cancelled file dialog does: the name left in it may be used as if it had been chosen.
enum class OnCancel { use_name_in_dialog, end };
/// What a file that cannot be created or written does.
enum class OnFileFailure { go_on, end_silently };
/// When `uploading_on` is set. Set before the refusals (all readers addressed, no reader there, also for
/// want of an address on a plain line, where only the connection test looks at it), it stays set
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

extern const UploadKind access_list_upload;
extern const UploadKind access_log_upload;
extern const UploadKind collected_records_upload;

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

extern const DownloadKind access_list_download;
extern const DownloadKind schedule_download;

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

extern const ClearKind access_list_clear;
extern const ClearKind access_log_clear;
extern const ClearKind collected_records_clear;
