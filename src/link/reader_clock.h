#pragma once

#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_link.h"

#include <QObject>

#include <memory>
#include <string>
#include <string_view>

/// A moment as both clocks are shown: "04/15/2001  13:05:09", month first, two blanks in the middle.
[[nodiscard]] std::string clock_text(const LocalTime& moment);

/// The same layout from a reader's answer YYMMDDhhmmss, unchecked: of a short answer the pieces that exist.
[[nodiscard]] std::string clock_text_of_reply(std::string_view reply);

/// The command that sets a reader's clock: "+", YYMMDDhhmmss of a text in that layout, the weekday's digit.
[[nodiscard]] std::string set_clock_command(std::string_view clock_text, int day_of_week);

/// In what the two kinds of "Read Date/Time" buttons differ. Meant so, the order too: a read aimed at all
/// readers is refused by the address of the previous exchange, before the address box is looked at again.
struct ClockReading {
  bool port_first;         ///< the port is checked before, not after, a read from all readers is refused
  bool asks_for_presence;  ///< the reader must answer the connection test first
};
inline constexpr ClockReading orinparam_clock_reading{true, true};  ///< quorsetup's button does the same
inline constexpr ClockReading keshsetup_clock_reading{false, false};

/// The clock of the PC and that of a reader, shown alike by three screens: one copy of both texts, which the
/// screens follow by the signals. Runs from its construction on.
class ReaderClock : public QObject {
  Q_OBJECT

 public:
  ReaderClock(ReaderLink& link, EventPump& pump, Dialogs& dialogs);

  /// "Current Date/Time": filled from the start, then each second.
  [[nodiscard]] const std::string& pc_clock_text() const { return pc_clock_text_; }
  /// "Reader Date/Time": empty until a reader has been read.
  [[nodiscard]] const std::string& reader_clock_text() const { return reader_clock_text_; }

  /// "Set Date/Time". Sends the PC clock as it is shown. Shows "Date/Time set in reader" (on a plain line and
  /// to all readers without any acknowledge) or "Error communicating with reader".
  void set_date_time();
  /// "Read Date/Time". Shows "Cannot read from address 127", "Reader is not Connected" and what readdt()
  /// shows.
  void read_date_time(const ClockReading& reading);
  /// Reads the reader's clock into its text. Shows "error reading from reader" when no answer came.
  void readdt();

 Q_SIGNALS:
  void pc_clock_changed();
  void reader_clock_changed();

 private:
  void tick();
  /// @return whether this reading is aimed at all readers, after saying so.
  bool refused_for_all_readers();

  ReaderLink& link_;
  EventPump& pump_;
  Dialogs& dialogs_;
  std::unique_ptr<Ticker> ticker_;
  std::string pc_clock_text_;
  std::string reader_clock_text_;
};
