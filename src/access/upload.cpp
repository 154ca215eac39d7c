#include "access/transfers.h"
#include "link/frame.h"
#include "link/numbers.h"
#include "link/timings.h"

namespace {

constexpr std::size_t longest_record = 500;
constexpr std::string_view last_reply = "END";

/// Whether a plain reply ends at the limit instead of at its CR; one that ends in a CR had it doubled. The
/// rest then follows unasked, and becomes a line of its own.
bool breaks_off(const std::string& reply) {
  return reply.size() == longest_record && reply.back() != wire::cr;
}

}  // namespace

void Transfers::upload(const UploadKind& kind, const StatusLine& status) {
  if (kind.port_check == PortCheck::before_dialog && !link_.checkcom()) {
    return;
  }
  if (busy()) {
    return;
  }
  FileRequest request{kind.title, kind.file_name};
  request.written_in_place = true;
  const FileAnswer answer = dialogs_.choose_save_file(request);
  if (!answer.accepted && kind.on_cancel == OnCancel::end) {
    return;
  }
  if (kind.port_check == PortCheck::after_dialog && !link_.checkcom()) {
    return;
  }
  if (link_.network_mode() && !link_.setnetaddr()) {
    return;
  }
  if (kind.flag_set == FlagSet::before_refusals) {
    busy_.uploading_on = true;
  }
  if (!may_upload(kind)) {
    return;  // with the flag as it stands
  }
  busy_.uploading_on = true;
  status.show("Records Uploaded:");
  const bool created = upload_file_.create(answer.name);
  UploadEnd end = UploadEnd::file_failure;
  if (created || kind.on_file_failure == OnFileFailure::go_on) {
    write_two_acks_on_network();
    link_.clearcomm();
    end = upload_acknowledged(kind) ? upload_records(kind, status) : UploadEnd::time_out;
  }
  // After a time-out the file stays open, and that is meant; it ends with the next upload or the program.
  if (end != UploadEnd::time_out) {
    upload_file_.close();
  }
  if (end != UploadEnd::file_failure) {
    dialogs_.message(end == UploadEnd::complete ? "Upload Complete" : "Reader Timeout");
  }
  status.hide();
  busy_.uploading_on = false;
  if (end != UploadEnd::file_failure) {
    write_two_acks_on_network();
  }
}

bool Transfers::may_upload(const UploadKind& kind) {
  if (link_.to_all_readers()) {
    dialogs_.message("You cannot upload from address 127");
    return false;
  }
  return kind.connection_test == ConnectionTest::none || link_.require_reader();
}

/// Announces the upload. @return false when a network reader does not acknowledge; a plain line never does.
bool Transfers::upload_acknowledged(const UploadKind& kind) {
  link_.write_frame(kind.request);
  if (!link_.network_mode()) {
    return true;
  }
  pump_.sleep(timings::upload_acknowledge_pause);
  return link_.bytes_waiting() > 0 && link_.read_char() == wire::ack;
}

/// On a plain line a reply ends where it is as long as the limit, and at a CR within it that is not doubled.
/// What it is not whole without comes unasked.
bool Transfers::rest_follows(const std::string& reply) {
  return !link_.network_mode() && (breaks_off(reply) || link_.bytes_waiting() > 0);
}

Transfers::UploadEnd Transfers::upload_records(const UploadKind& kind, const StatusLine& status) {
  std::string reply;
  bool is_rest = false;
  // What waits behind a reply may be a stray character; of a record that was cut at the limit the end must
  // come.
  bool must_end = true;
  // The status line has room for five digits, the counter for more: no length of a log ends an upload.
  for (int count = 0;;) {
    if (!is_rest) {
      link_.write_frame(kind.record_request);
    }
    const bool ended = link_.getinput(reply, longest_record, kind.reply_time_out, true, true);
    if (!ended && must_end) {
      return UploadEnd::time_out;
    }
    if (reply == last_reply && !is_rest) {
      return UploadEnd::complete;
    }
    if (!reply.empty() || (!is_rest && kind.empty_reply == EmptyReply::written)) {
      const bool written = upload_file_.write_line(kind.line_of(reply));
      if (!written && kind.on_file_failure == OnFileFailure::end_silently) {
        return UploadEnd::file_failure;
      }
      status.show("Records Uploaded: " + with_leading_zeros(++count, 5));
    }
    is_rest = ended && rest_follows(reply);
    must_end = !is_rest || breaks_off(reply);
  }
}
