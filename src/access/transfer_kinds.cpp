#include "access/transfer_kinds.h"

#include "access/access_file.h"
#include "link/timings.h"

// The differences look like slips and are meant: readers, files and habits out there count on them.

namespace {

std::string unchanged_line(std::string_view reply) {
  return std::string{reply};
}

}  // namespace

constinit const UploadKind access_list_upload{
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

constinit const UploadKind access_log_upload{
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

constinit const UploadKind collected_records_upload{
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

constinit const DownloadKind access_list_download{
    .title = "Download Access List File",
    .file_name = "defaccess.txt",
    .address_taken = AddressTaken::before_connection_test,
    .warning_to_all = "Warning - you are downloading to all readers",
    .pause = timings::access_record_pause,
    .broadcast_ack = BroadcastAck::none,
    .pause_after_broadcast_line = {},
};

constinit const DownloadKind schedule_download{
    .title = "Download Schedule File",
    .file_name = "schedule.txt",
    .address_taken = AddressTaken::after_connection_test,
    .warning_to_all = {},
    .pause = timings::schedule_command_pause,
    .broadcast_ack = BroadcastAck::after_each_command,
    .pause_after_broadcast_line = timings::broadcast_schedule_pause,
};

constinit const ClearKind access_list_clear{
    .command = "cd",
    .done = "        Reader Access List Cleared         ",
    .first_check = FirstCheck::busy,
    .connection_test = ConnectionTest::made,
    .on_time_out = OnTimeOut::message,
};

constinit const ClearKind access_log_clear{
    .command = "cl",
    .done = "        Reader Log Data Cleared         ",
    .first_check = FirstCheck::busy,
    .connection_test = ConnectionTest::made,
    .on_time_out = OnTimeOut::message,
};

constinit const ClearKind collected_records_clear{
    .command = "cl",
    .done = "        Reader Log Data Cleared         ",
    .first_check = FirstCheck::port,
    .connection_test = ConnectionTest::none,
    .on_time_out = OnTimeOut::message_and_hidden_status,
};
