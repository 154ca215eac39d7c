#pragma once

#include "simulator/access_list.h"
#include "simulator/clock.h"
#include "simulator/family.h"
#include "simulator/settings.h"
#include "simulator/time_point.h"

#include <array>
#include <deque>
#include <string>
#include <vector>

namespace readersim {

/// The speeds a reader can be set to, in the order of the commands that do so.
inline constexpr std::array baud_rates{1200, 2400, 4800, 9600, 19200};

enum class DataFormat { eight_none, seven_even, seven_odd };

/// How a side of the line sends and hears its bytes; always one stop bit.
struct LineFormat {
  int baud = 9600;  ///< 1200, 2400, 4800, 9600 or 19200
  DataFormat data = DataFormat::eight_none;
  bool operator==(const LineFormat&) const = default;
};

/// A lamp or a relay: a steady state, and over it one for a time.
class Lamp {
 public:
  enum class State { off, on, blinking };

  [[nodiscard]] State at(TimePoint now) const { return now < until_ ? timed_ : steady_; }
  /// For that many seconds; 0 means until told otherwise.
  void light(State state, int seconds, TimePoint now);

 private:
  State steady_ = State::off;
  State timed_ = State::off;
  TimePoint until_{0};
};

/// What a reader has stored for an upload, and how far the upload has come.
struct Store {
  std::vector<std::string> records;
  std::size_t next = 0;
};

/// What waits for a poll: badge data in a reader on the network.
struct PollQueue {
  static constexpr std::size_t capacity = 50;
  std::deque<std::string> waiting;
  bool offered = false;  ///< the first of them went out in the last poll reply
  int acknowledges = 0;  ///< what the host said since; exactly one means that it has it
  bool end_due = false;  ///< all have been taken, and the host has not been told yet
};

/// One reader, whole. Everything is open to look at, and a test may put it in any state it wants.
struct Reader {
  /// A reader as it leaves the factory; the serial number is part of its identification.
  Reader(Family made_as, int at_address, int serial);

  Family family;
  int address;                 ///< 0 to 126
  std::string identification;  ///< answered to "V": at least 10, at most 53 characters
  bool protocol_mode = false;  ///< true: hears network frames only; false: plain commands only
  char operating_mode;         ///< '1' Vell, '2' Kesh, '3' Orin, '4' Orinta, '5' Accum
  LineFormat format;
  Clock clock;
  Settings settings;

  Lamp red, green, relay;
  int relay_operations = 0;    ///< how often the relay has closed
  int sounder_operations = 0;  ///< how often the speaker has sounded
  int last_sound = 0;          ///< for how long the last time, hundredths of a second

  AccessList access;
  Schedules schedules;
  std::size_t next_entry = 0;  ///< the access list entry the next "u" gets
  Store log;                   ///< access log, or collected records
  PollQueue polls;
  char verdict_letter = 'A';  ///< answered to a download command
  int verdict_times = 0;      ///< how often it is answered in place of 'A'; -1 for ever
  std::string last_card;      ///< for the suppression of duplicates
};

/// Power off and on: lamps as set for power up, relay and displays off, uploads from the start.
void reset(Reader& reader);
/// Sets the red or green lamp, the sounder and the relay going as set for a good or a refused read.
void show_good_read(Reader& reader, TimePoint now);
void show_bad_read(Reader& reader, TimePoint now);

/// The host acknowledged the reader it last spoke to.
void host_acknowledged(Reader& reader);
/// The host goes on to something else: what it acknowledged once is done with.
void host_moved_on(Reader& reader);

}  // namespace readersim
