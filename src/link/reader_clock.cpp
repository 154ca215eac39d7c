#include "link/reader_clock.h"

#include "link/messages.h"
#include "link/numbers.h"
#include "link/timings.h"

#include <algorithm>

namespace {

constexpr int longest_clock_reply = 20;

/// `count` characters from `first` on; fewer where the text ends.
std::string piece(std::string_view text, std::size_t first, std::size_t count) {
  return std::string(text.substr(std::min(first, text.size()), count));
}

}  // namespace

std::string clock_text(const LocalTime& moment) {
  return with_leading_zeros(moment.month, 2) + "/" + with_leading_zeros(moment.day, 2) + "/" +
         with_leading_zeros(moment.year, 4) + "  " + with_leading_zeros(moment.hour, 2) + ":" +
         with_leading_zeros(moment.minute, 2) + ":" + with_leading_zeros(moment.second, 2);
}

std::string clock_text_of_reply(std::string_view reply) {
  const std::string year = piece(reply, 0, 2);
  const std::string century = year < "20" ? "20" : "19";  // compared as text, so that year 20 is 1920: meant
  return piece(reply, 2, 2) + "/" + piece(reply, 4, 2) + "/" + century + year + "  " + piece(reply, 6, 2) +
         ":" + piece(reply, 8, 2) + ":" + piece(reply, 10, 2);
}

std::string set_clock_command(std::string_view clock_text, int day_of_week) {
  return "+" + piece(clock_text, 8, 2) + piece(clock_text, 0, 2) + piece(clock_text, 3, 2) +
         piece(clock_text, 12, 2) + piece(clock_text, 15, 2) + piece(clock_text, 18, 2) +
         std::to_string(day_of_week);
}

ReaderClock::ReaderClock(ReaderLink& link, EventPump& pump, Dialogs& dialogs)
    : link_(link),
      pump_(pump),
      dialogs_(dialogs),
      ticker_(pump.make_ticker(timings::clock_tick, [this] { tick(); })) {
  tick();
  ticker_->start();
}

void ReaderClock::tick() {
  pc_clock_text_ = clock_text(pump_.local_time());
  Q_EMIT pc_clock_changed();
}

void ReaderClock::set_date_time() {
  if (!link_.checkcom() || !link_.setnetaddr()) {
    return;
  }
  // The date is the one shown, the weekday is today's: around midnight they may differ, and that is meant.
  const std::string command = set_clock_command(pc_clock_text_, pump_.local_time().day_of_week);
  link_.clear_then_discard();
  bool done = link_.write_frame(command);
  if (done && link_.network_mode() && !link_.to_all_readers()) {
    done = link_.getack();
  }
  dialogs_.message(done ? messages::date_time_set : messages::error_communicating);
}

bool ReaderClock::refused_for_all_readers() {
  if (link_.to_all_readers()) {
    dialogs_.message(messages::no_reading_from_all);
    return true;
  }
  return false;
}

void ReaderClock::read_date_time(const ClockReading& reading) {
  const bool may_read = reading.port_first ? link_.checkcom() && !refused_for_all_readers()
                                           : !refused_for_all_readers() && link_.checkcom();
  if (!may_read || !link_.setnetaddr()) {
    return;
  }
  if (reading.asks_for_presence && !link_.require_reader()) {
    return;
  }
  link_.clearcomm();
  readdt();
}

void ReaderClock::readdt() {
  if (!link_.checkcom() || !link_.setnetaddr()) {
    return;
  }
  link_.clear_then_discard();
  std::string& reply = link_.last_response();
  reply.clear();
  if (!link_.write_frame("t") ||
      !link_.getinput(reply, longest_clock_reply, timings::clock_reply, true, false)) {
    dialogs_.message(messages::error_reading);
    return;
  }
  reader_clock_text_ = clock_text_of_reply(reply);
  Q_EMIT reader_clock_changed();
  if (link_.network_mode()) {
    link_.write_ack();  // the second one of this reading, and meant
  }
  link_.clear_then_discard();
}
