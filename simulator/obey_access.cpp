#include "simulator/command.h"
#include "simulator/digits.h"

#include <algorithm>

namespace readersim {
namespace {

/// The letter a download command is answered with: 'A' for accepted, 'N' for refused, or what the
/// console asked for. A letter other than 'A' stores nothing.
char verdict_letter(Reader& reader, bool well_formed) {
  if (reader.verdict_times != 0) {
    reader.verdict_times -= reader.verdict_times > 0 ? 1 : 0;
    return reader.verdict_letter;
  }
  return well_formed ? 'A' : 'N';
}

Verdict letter(char verdict, std::string meaning) {
  return {.kind = Verdict::Kind::data,
          .data = std::string(1, verdict),
          .meaning = std::move(meaning) + (verdict == 'A' ? "" : ", not stored")};
}

bool digits(std::string_view text, std::size_t from, std::size_t count) {
  return text.size() >= from + count && all_digits(text.substr(from, count));
}

/// An identifier as the reader keeps it: cut or blank-padded to its record length.
std::string as_stored(const Reader& reader, std::string_view id) {
  std::string stored{id};
  stored.resize(static_cast<std::size_t>(reader.settings.number(Setting::record_length)), ' ');
  return stored;
}

std::string describe_entry(std::string_view argument) {
  return "access entry, schedule " + std::string{argument.substr(0, 3)} + ", id \"" +
         std::string{argument.substr(std::min<std::size_t>(3, argument.size()))} + '"';
}

bool well_formed_entry(std::string_view argument) {
  return digits(argument, 0, 3) && number_in(argument.substr(0, 3)) <= 255 && argument.size() > 3;
}

bool store_entry(Reader& reader, std::string_view argument) {
  return reader.access.put(as_stored(reader, argument.substr(3)), number_in(argument.substr(0, 3)));
}

}  // namespace

Verdict add_entry(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  char verdict = verdict_letter(reader, well_formed_entry(argument));
  if (verdict == 'A' && (!well_formed_entry(argument) || !store_entry(reader, argument))) {
    verdict = 'N';
  }
  return letter(verdict, describe_entry(argument));
}

Verdict add_entry_unanswered(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  if (!well_formed_entry(argument) || !store_entry(reader, argument)) {
    return {};
  }
  return done(describe_entry(argument));
}

Verdict add_schedule_day(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  const bool well_formed = argument.size() == 12 && digits(argument, 0, 4);
  char verdict = verdict_letter(reader, well_formed);
  if (verdict == 'A' && (!well_formed || !reader.schedules.put_day(number_in(argument.substr(0, 3)),
                                                                   argument[3] - '0', argument.substr(4)))) {
    verdict = 'N';
  }
  return letter(verdict, "schedule " + std::string{argument.substr(0, 3)} + " day");
}

Verdict add_associated(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  const bool well_formed = argument.size() == 6 && digits(argument, 0, 6);
  char verdict = verdict_letter(reader, well_formed);
  if (verdict == 'A' && (!well_formed || !reader.schedules.put_associated(number_in(argument.substr(0, 3)),
                                                                          number_in(argument.substr(3))))) {
    verdict = 'N';
  }
  return letter(verdict, "schedule " + std::string{argument.substr(0, 3)} + " associated schedule");
}

Verdict rewind_list(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.next_entry = 0;
  return done(row.meaning);
}

Verdict next_list_entry(Reader& reader, const Command& row, std::string_view, TimePoint) {
  if (reader.next_entry >= reader.access.entries().size()) {
    return {.kind = Verdict::Kind::data, .data = "END", .meaning = "end of the access list"};
  }
  const AccessList::Entry& entry = reader.access.entries()[reader.next_entry++];
  // The schedule travels as one character of that code, right after the identifier.
  return {.kind = Verdict::Kind::data,
          .data = entry.id + static_cast<char>(entry.schedule),
          .meaning = std::string{row.meaning} + " " + std::to_string(reader.next_entry)};
}

Verdict clear_list(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.access.clear();
  reader.next_entry = 0;
  return done(row.meaning);
}

}  // namespace readersim
