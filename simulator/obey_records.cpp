#include "simulator/command.h"
#include "simulator/wire.h"

#include <array>

namespace readersim {
namespace {

// What a poll reply says of the records behind it, soh and eot aside.
constexpr char nothing_new = stx;

}  // namespace

Verdict set_record_length(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  const std::size_t digits = row.argument.find_last_of('#') + 1;
  const auto length = static_cast<std::size_t>(number_in(argument.substr(0, digits)));
  const FamilyTraits& made = traits(reader.family);
  if (length < made.least_record || length > made.longest_record) {
    return {};
  }
  reader.settings.set(Setting::record_length, std::to_string(length));
  constexpr std::array flags{Setting::time_stamping, Setting::id_1_sent, Setting::id_2_sent};
  for (std::size_t i = digits; i < argument.size(); ++i) {
    reader.settings.set(flags.at(i - digits), argument[i] == '1' ? "on" : "off");
  }
  // Records of another length do not fit the store any more: all data in the reader goes.
  reader.access.clear();
  reader.schedules.clear();
  reader.next_entry = 0;
  reader.log = {};
  reader.last_card.clear();
  return done(std::string{row.meaning} + ": " + std::string{argument} + ", all data deleted");
}

Verdict put_age(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  // One command serves both ages: the reader keeps the last two, in the order they came.
  reader.settings.set(Setting::age_1, reader.settings.get(Setting::age_2));
  reader.settings.set(Setting::age_2, std::to_string(number_in(argument)));
  return done(std::string{row.meaning} + " " + std::string{argument});
}

Verdict rewind_log(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.log.next = 0;
  return done(row.meaning);
}

Verdict next_log_record(Reader& reader, const Command& row, std::string_view, TimePoint) {
  if (reader.log.next >= reader.log.records.size()) {
    return {.kind = Verdict::Kind::data, .data = "END", .meaning = "end of the log"};
  }
  const std::string& record = reader.log.records[reader.log.next++];
  return {.kind = Verdict::Kind::data,
          .data = record,
          .meaning = std::string{row.meaning} + " " + std::to_string(reader.log.next)};
}

Verdict clear_log(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.log = {};
  reader.last_card.clear();  // its record is gone, so it is no duplicate any more
  return done(row.meaning);
}

Verdict poll(Reader& reader, const Command& row, std::string_view, TimePoint) {
  if (!reader.protocol_mode) {
    return {};  // a reader on a plain line sends what it reads at once: there is nothing to poll
  }
  Verdict verdict{Verdict::Kind::poll, {}, nothing_new, std::string{row.meaning}};
  PollQueue& polls = reader.polls;
  if (!polls.waiting.empty()) {
    polls.offered = true;
    verdict.poll_state = soh;
    verdict.data = polls.waiting.front();
    verdict.meaning += ", a record";
  } else if (polls.end_due) {
    polls.end_due = false;
    verdict.poll_state = eot;
    verdict.meaning += ", no more records";
  } else {
    verdict.meaning += ", nothing new";
  }
  return verdict;
}

}  // namespace readersim
