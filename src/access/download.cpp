#include "access/access_file.h"
#include "access/schedule_file.h"
#include "access/transfers.h"
#include "link/deadline.h"
#include "link/messages.h"
#include "link/numbers.h"
#include "link/timings.h"
#include "shell/safe_file.h"

namespace {

constexpr std::int64_t longest_record_length = 18;
constexpr char accepted_reply = 'A';

std::string access_command(const AccessRecord& record, std::size_t record_length, bool to_all_readers) {
  // All readers at once have a command of their own, which none of them answers.
  return (to_all_readers ? "AN" : "AC") + with_leading_zeros(record.schedule, 3) +
         record.id.substr(0, record_length);
}

std::vector<std::string> schedule_commands(const ScheduleRecord& record) {
  std::vector<std::string> commands;
  for (std::size_t d = 0; d < record.days.size(); ++d) {
    commands.push_back("SA" + record.schedule + std::to_string(d + 1) + record.days[d]);
  }
  commands.push_back("SS" + record.schedule + record.associated);
  return commands;
}

std::string progress_text(int sent, int errors) {
  return "Records Downloaded: " + with_leading_zeros(sent, 5) + "  Errors: " + with_leading_zeros(errors, 5);
}

}  // namespace

void Transfers::download_access_list(std::string_view record_length, const StatusLine& status) {
  if (!link_.checkcom() || busy()) {
    return;
  }
  const std::int64_t length = number_or_zero(record_length);
  if (length <= 0) {
    dialogs_.message("Record Size must be set in Orin Setup Screen prior to downloading");
    return;
  }
  if (length > longest_record_length) {
    dialogs_.message(
        "Record size set in Orin Setup Screen is > 18\r"
        "18 is the maximum size that can be downloaded");
    return;
  }
  const auto commands_of = [length](std::string_view line, bool to_all_readers) {
    return std::vector{
        access_command(read_delimited_line(line), static_cast<std::size_t>(length), to_all_readers)};
  };
  download(access_list_download, commands_of, status);
}

void Transfers::download_schedules(const StatusLine& status) {
  if (!link_.checkcom() || busy()) {
    return;
  }
  const auto commands_of = [](std::string_view line, bool /*to_all_readers*/) {
    return schedule_commands(read_delimited_schedule(line));
  };
  download(schedule_download, commands_of, status);
}

void Transfers::download(const DownloadKind& kind, const CommandsOf& commands_of, const StatusLine& status) {
  // A cancelled dialog is no abort: the name left in it is used, and that is meant.
  const FileAnswer answer = dialogs_.choose_open_file({kind.title, kind.file_name, StartFolder::access});
  if (!may_download(kind)) {
    return;
  }
  LineReader file{read_download(answer)};
  Progress progress;
  status.show(progress_text(progress.sent, progress.errors));
  write_two_acks_on_network();
  bool in_time = true;
  while (in_time) {
    const std::optional<std::string_view> line = file.next_line();
    if (!line) {
      break;
    }
    in_time = send_line(kind, commands_of(*line, link_.to_all_readers()), progress, status);
  }
  if (in_time) {
    status.show(progress_text(progress.sent, progress.errors));
    dialogs_.message("        Download Complete         ");
  } else {
    dialogs_.message(messages::timed_out);
  }
  status.hide();
  busy_.downloading_on = false;
  write_two_acks_on_network();
}

bool Transfers::may_download(const DownloadKind& kind) {
  const auto address_taken = [this] { return !link_.network_mode() || link_.setnetaddr(); };
  if (kind.address_taken == AddressTaken::after_connection_test) {
    return link_.require_reader() && address_taken();
  }
  if (!address_taken()) {
    return false;
  }
  if (link_.to_all_readers()) {
    dialogs_.message(kind.warning_to_all);
    return true;
  }
  return link_.require_reader();
}

/// Sets the busy flag and opens the file; one that cannot be read leaves the flag clear.
std::string Transfers::read_download(const FileAnswer& answer) {
  busy_.downloading_on = true;
  try {
    return read_whole_file(answer.name);
  } catch (...) {
    busy_.downloading_on = false;
    throw;
  }
}

/// @return false when the reader did not answer in time.
bool Transfers::send_line(const DownloadKind& kind, const std::vector<std::string>& commands,
                          Progress& progress, const StatusLine& status) {
  for (const std::string& command : commands) {
    if (!send(kind, command, progress, status)) {
      return false;
    }
  }
  if (link_.to_all_readers() && kind.pause_after_broadcast_line.count() > 0) {
    pump_.sleep(kind.pause_after_broadcast_line);
  }
  return true;
}

/// Sends a command and judges its answer. @return false when none came in time or the line took no bytes.
bool Transfers::send(const DownloadKind& kind, std::string_view command, Progress& progress,
                     const StatusLine& status) {
  link_.clearcomm();
  const Deadline deadline{pump_, timings::transfer_reply};
  if (!link_.write_frame(command)) {
    return false;
  }
  ++progress.sent;
  status.show(progress_text(progress.sent, progress.errors));
  pump_.sleep(kind.pause);
  if (link_.to_all_readers()) {
    if (kind.broadcast_ack == BroadcastAck::after_each_command) {
      link_.clearcomm();
      link_.write_ack();
    }
    return true;
  }
  // A plain answer has an end character, a network answer also an ACK and a lead-in before it.
  if (!await_characters(link_.network_mode() ? 4 : 2, deadline)) {
    return false;
  }
  if (!accepted()) {
    ++progress.errors;  // the record is not repeated
  }
  return true;
}

/// Reads the answer character by character: on a network the third one counts, on a plain line the first.
bool Transfers::accepted() {
  if (!link_.network_mode()) {
    return link_.read_char() == accepted_reply;
  }
  link_.read_char();
  link_.read_char();
  const bool accepted = link_.read_char() == accepted_reply;
  link_.clearcomm();
  link_.write_ack();
  return accepted;
}
