#include "simulator/command.h"
#include "simulator/reader.h"
#include "simulator/verdict.h"

#include <algorithm>

namespace readersim {
namespace {

constexpr char kesh_digit = '2';
constexpr char vell_digit = '1';
constexpr char accumulate_digit = '5';
constexpr std::size_t memory = 40000;  // records a reader can hold at most

Swipe outcome(bool accepted, std::string meaning) {
  return {accepted, {}, std::move(meaning)};
}

std::string cut(const Reader& reader, std::string_view card) {
  return std::string{
      card.substr(0, static_cast<std::size_t>(reader.settings.number(Setting::record_length)))};
}

/// How badge data leaves a reader by itself: at once on a plain line, at the next poll on a network.
void pass_on(Reader& reader, std::string_view data, Swipe& swipe) {
  if (reader.protocol_mode) {
    if (reader.polls.waiting.size() == PollQueue::capacity) {
      // What is offered at this moment stays in front.
      reader.polls.waiting.erase(reader.polls.waiting.begin() + (reader.polls.offered ? 1 : 0));
    }
    reader.polls.waiting.emplace_back(data);
    reader.polls.end_due = false;
  } else {
    swipe.unsolicited = std::string{data};
    if (reader.settings.is_on(Setting::cr_terminator)) {
      swipe.unsolicited += '\r';
    }
  }
}

Swipe transmit(Reader& reader, std::string_view card, TimePoint now) {
  if (reader.protocol_mode && reader.polls.waiting.size() == PollQueue::capacity) {
    show_bad_read(reader, now);  // nothing else keeps it, so nothing may be dropped
    return outcome(false, "refused, too many reads wait for a poll");
  }
  Swipe swipe = outcome(true, reader.protocol_mode ? "waits for a poll" : "sent");
  pass_on(reader, card, swipe);
  show_good_read(reader, now);
  return swipe;
}

/// The access log: date and time, G granted, B bad or A accumulated, and what was read.
void log_access(Reader& reader, char result, std::string_view id, TimePoint now, Swipe& swipe) {
  if (reader.log.records.size() >= memory) {
    swipe.meaning += ", log full";
    return;
  }
  reader.log.records.push_back(reader.clock.stamp(now) + ' ' + result + ' ' + std::string{id});
  if (reader.protocol_mode || reader.settings.is_on(Setting::rs232_logging)) {
    pass_on(reader, reader.log.records.back(), swipe);
  }
}

Swipe decide(Reader& reader, std::string_view card, TimePoint now) {
  const std::string id = cut(reader, card);
  std::string stored = id;
  stored.resize(static_cast<std::size_t>(reader.settings.number(Setting::record_length)), ' ');
  if (reader.operating_mode == accumulate_digit) {
    Swipe swipe = outcome(true, "accumulated");
    log_access(reader, 'A', id, now, swipe);
    show_good_read(reader, now);
    return swipe;
  }
  const auto schedule = reader.access.schedule_of(stored);
  const Clock::Reading time = reader.clock.read(now);
  if (schedule && reader.schedules.allows(*schedule, time.weekday, time.minute_of_day())) {
    Swipe swipe = outcome(true, "granted, schedule " + std::to_string(*schedule));
    log_access(reader, 'G', id, now, swipe);
    show_good_read(reader, now);
    const int seconds = reader.settings.number(Setting::relay_time);
    reader.relay_operations += reader.relay.at(now) == Lamp::State::on ? 0 : 1;
    reader.relay.light(Lamp::State::on, seconds, now);
    reader.green.light(Lamp::State::on, seconds, now);
    return swipe;
  }
  Swipe swipe =
      outcome(false, schedule ? "refused by schedule " + std::to_string(*schedule) : "refused, not listed");
  if (reader.family != Family::orinta || reader.settings.is_on(Setting::bad_logging)) {
    log_access(reader, 'B', id, now, swipe);
  }
  show_bad_read(reader, now);
  return swipe;
}

std::string collected_record(const Reader& reader, std::string_view card, TimePoint now) {
  const Settings& settings = reader.settings;
  const std::string_view delimiter = settings.is_on(Setting::comma_delimited) ? "," : "";
  std::string record;
  const auto field = [&](std::string_view text) { record.append(text).append(delimiter); };
  if (settings.is_on(Setting::id_1_sent)) {
    field(settings.get(Setting::id_1));
  }
  if (settings.is_on(Setting::id_2_sent)) {
    field(settings.get(Setting::id_2));
  }
  if (settings.is_on(Setting::time_stamping)) {
    field(reader.clock.stamp(now));
  }
  return record + cut(reader, card);
}

Swipe collect(Reader& reader, std::string_view card, TimePoint now) {
  const Settings& settings = reader.settings;
  if (settings.is_on(Setting::duplicate_suppression) && card == reader.last_card) {
    return outcome(false, "the same card again, suppressed");
  }
  if (reader.family == Family::quor && !settings.is_on(Setting::logging)) {
    show_good_read(reader, now);
    return outcome(true, "read, logging is off");
  }
  const auto max = static_cast<std::size_t>(settings.number(Setting::max_records));
  if (reader.log.records.size() >= (max == 0 ? memory : std::min(max, memory))) {
    show_bad_read(reader, now);
    return outcome(false, "refused, the reader is full");
  }
  Swipe swipe = outcome(true, "collected");
  reader.log.records.push_back(collected_record(reader, card, now));
  reader.last_card = card;
  if (reader.protocol_mode || settings.is_on(Setting::rs232_logging)) {
    pass_on(reader, reader.log.records.back(), swipe);
  }
  show_good_read(reader, now);
  return swipe;
}

}  // namespace

Swipe swipe(Reader& reader, std::string_view card, TimePoint now) {
  if (reader.operating_mode == vell_digit) {
    return transmit(reader, card, now);
  }
  return reader.operating_mode == kesh_digit ? collect(reader, card, now) : decide(reader, card, now);
}

}  // namespace readersim
