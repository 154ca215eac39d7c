#pragma once

#include "link/busy_flags.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_link.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

enum class PollColour { black, red, green };

/// Where the poll prints its lines.
class PollDisplay {
 public:
  PollDisplay() = default;
  PollDisplay(const PollDisplay&) = delete;
  PollDisplay& operator=(const PollDisplay&) = delete;
  virtual ~PollDisplay() = default;

  /// White, without a line.
  virtual void clear() = 0;
  /// One whole line; bytes of the terminals' code page, no control characters among them.
  virtual void print(std::string_view line, PollColour colour) = 0;
};

/// The boxes of the protocol test as they stand, in bytes.
struct PollBoxes {
  std::string first_address;
  std::string last_address;
  std::string delay;     ///< before every poll, ms
  std::string time_out;  ///< for the first character of a reply, ms
};

/// Polls a range of reader addresses over and over until it is stopped, and prints a line per reply.
class Poller {
 public:
  Poller(ReaderLink& link, EventPump& pump, Dialogs& dialogs, BusyFlags& busy, PollDisplay& display)
      : link_(link), pump_(pump), dialogs_(dialogs), busy_(busy), display_(display) {}

  /// Returns when polling has ended; `polling_on` is set meanwhile. Called again while it polls, it takes
  /// the new range at once, or leaves the old one polling when the new one is refused. A port that is
  /// closed under it ends the polling.
  /// Shows "Comm port is not open", "Invalid Addresses selected for poll" or "Address must be < 127".
  /// @throws ClickError when a box holds no 16-bit number.
  void start(const PollBoxes& boxes);
  /// The poll in progress is finished first.
  void stop() { stop_requested_ = true; }

  /// Also a line per reader that is silent or answers wrongly; counts from the next line on.
  void set_show_all(bool show_all) { show_all_ = show_all; }
  [[nodiscard]] bool show_all() const { return show_all_; }

  /// Sends every reader the reset command, plain and networked. Awaits nothing.
  void reset_all_readers();

  /// Clears the display when it is full. Runs before every line.
  void checkline();

 private:
  struct Range {
    int first;
    int last;
    std::chrono::milliseconds delay;
    std::chrono::milliseconds time_out;
  };
  /// What ended the wait for a reply.
  enum class Reply { character, time_out, none };

  [[nodiscard]] std::optional<Range> checked_range(const PollBoxes& boxes);
  void poll_until_stopped();
  void poll(int address);
  [[nodiscard]] Reply await_reply();
  void take_reply(int address);
  void print_reply(int address, std::size_t length);
  void unknown_response(int address);
  void print(int address, std::string_view text);
  void acknowledge_twice();

  ReaderLink& link_;
  EventPump& pump_;
  Dialogs& dialogs_;
  BusyFlags& busy_;
  PollDisplay& display_;
  Range range_{};
  bool new_range_ = false;
  bool stop_requested_ = false;
  bool show_all_ = false;
  int printed_lines_ = 0;  ///< since the display was cleared
  PollColour colour_ = PollColour::black;
};
