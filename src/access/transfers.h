#pragma once

#include "access/transfer_kinds.h"
#include "access/upload_file.h"
#include "link/busy_flags.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_link.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The line on the screen that tells how far a transfer has come.
struct StatusLine {
  std::function<void(std::string_view text)> show;  ///< shows the text and draws it before it returns
  std::function<void()> hide;
};

/// What goes between files and readers: access lists, schedules, logs and collected records. One object
/// serves all screens. Every operation runs until it is done, yielding to the event loop while it waits; it
/// reports by boxes and by the status line. The texts and the rules of each stand in transfer_kinds.h.
class Transfers {
 public:
  Transfers(ReaderLink& link, EventPump& pump, Dialogs& dialogs, BusyFlags& busy)
      : link_(link), pump_(pump), dialogs_(dialogs), busy_(busy) {}

  /// Asks for a file and writes into it what the reader holds, a record a line. Does nothing while another
  /// transfer or a poll runs.
  void upload(const UploadKind& kind, const StatusLine& status);

  /// Asks for an access list and sends it, one employee a command. Does nothing while another transfer or a
  /// poll runs.
  /// @param record_length the "Record Length" box: how many characters of an ID are sent, 1 to 18
  /// @throws ClickError "File not found: …" or "Cannot read …"
  void download_access_list(std::string_view record_length, const StatusLine& status);

  /// Asks for a schedule file and sends it, eight commands a schedule. Does nothing while another transfer
  /// or a poll runs.
  /// @throws ClickError "File not found: …" or "Cannot read …"
  void download_schedules(const StatusLine& status);

  /// Erases in the reader. Refuses while a transfer or a poll runs.
  void clear(const ClearKind& kind, const StatusLine& status);

 private:
  /// The commands that a line of a file becomes; all readers may have a command of their own.
  using CommandsOf = std::function<std::vector<std::string>(std::string_view line, bool to_all_readers)>;
  struct Progress {
    int sent = 0;
    int errors = 0;
  };

  /// Whether the line is in use. A poll goes on behind this screen when that was opened with Enter.
  [[nodiscard]] bool busy() const { return busy_.polling_on || busy_.downloading_on || busy_.uploading_on; }
  void write_two_acks_on_network();
  [[nodiscard]] bool await_characters(std::size_t count, const Deadline& deadline);

  [[nodiscard]] bool may_upload(const UploadKind& kind);
  [[nodiscard]] bool upload_acknowledged(const UploadKind& kind);
  enum class UploadEnd { complete, time_out, file_failure };
  [[nodiscard]] bool rest_follows(const std::string& reply);
  UploadEnd upload_records(const UploadKind& kind, const StatusLine& status);

  void download(const DownloadKind& kind, const CommandsOf& commands_of, const StatusLine& status);
  [[nodiscard]] bool may_download(const DownloadKind& kind);
  [[nodiscard]] std::string read_download(const FileAnswer& answer);
  bool send_line(const DownloadKind& kind, const std::vector<std::string>& commands, Progress& progress,
                 const StatusLine& status);
  bool send(const DownloadKind& kind, std::string_view command, Progress& progress, const StatusLine& status);
  [[nodiscard]] bool accepted();

  [[nodiscard]] bool may_clear(const ClearKind& kind);

  ReaderLink& link_;
  EventPump& pump_;
  Dialogs& dialogs_;
  BusyFlags& busy_;
  UploadFile upload_file_;
};
