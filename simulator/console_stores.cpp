// The console's commands about what a reader keeps: settings, lists, schedules, records.

#include "simulator/console.h"
#include "simulator/fabricate.h"
#include "simulator/report.h"
#include "simulator/trace.h"
#include "simulator/wire.h"
#include "simulator/words.h"

#include <algorithm>

namespace readersim {
namespace {

void set_format(LineFormat& format, const std::string& word) {
  for (const DataFormat data : {DataFormat::eight_none, DataFormat::seven_even, DataFormat::seven_odd}) {
    if (describe(LineFormat{format.baud, data}).ends_with(' ' + word)) {
      format.data = data;
      return;
    }
  }
  throw Mistake("a format is 8N, 7E or 7O");
}

void set_mode(Reader& reader, const std::string& word) {
  for (const char digit : traits(reader.family).modes) {
    if (word == std::string(1, digit) || word == mode_name(digit)) {
      reader.operating_mode = digit;
      return;
    }
  }
  throw Mistake("the modes of this reader are " + std::string{traits(reader.family).modes});
}

/// What has a type of its own in the reader. False when the name is none of these.
bool set_own(Reader& reader, const std::string& name, const std::string& value, TimePoint now) {
  if (name == "address") {
    reader.address = number(value, 0, highest_address);
  } else if (name == "protocol") {
    reader.protocol_mode = on_or_off(value);
  } else if (name == "mode") {
    set_mode(reader, value);
  } else if (name == "baud") {
    reader.format.baud = baud_rate(value);
  } else if (name == "format") {
    set_format(reader.format, value);
  } else if (name == "identification") {
    reader.identification = unescape(value);
  } else if (name == "clock") {
    if (!reader.clock.set(value, now)) {
      throw Mistake("a clock is set as YYMMDDhhmmssD, D from 1 Monday to 7 Sunday");
    }
  } else {
    return false;
  }
  return true;
}

/// False when this reader has no such parameter. The longest name counts: "track 1" is also the beginning
/// of "track 1 start/stop".
bool set_parameter(Reader& reader, const std::string& text) {
  const SettingTraits* found = nullptr;
  for (const SettingTraits& each : all_settings()) {
    if (text.starts_with(std::string{each.name} + ' ') && each.families.has(reader.family) &&
        (found == nullptr || each.name.size() > found->name.size())) {
      found = &each;
    }
  }
  if (found != nullptr) {
    reader.settings.set(found->setting, unescape(text.substr(found->name.size() + 1)));
  }
  return found != nullptr;
}

const Reader& one_access_reader(const std::vector<Seat*>& seats) {
  if (!access_families.has(seats.front()->reader.family)) {
    throw Mistake("only Orin and Orinta readers have that");
  }
  return seats.front()->reader;
}

}  // namespace

std::string Console::set(const Words& words, TimePoint now) {
  for (Seat* seat : seats(words)) {
    // "clock display" is a parameter, "clock" is not.
    if (!set_parameter(seat->reader, join(words, 2)) &&
        !set_own(seat->reader, words[2], join(words, 3), now)) {
      throw Mistake("this reader has no \"" + join(words, 2) + "\", see show");
    }
  }
  return {};
}

std::string Console::grant(const Words& words, TimePoint) {
  for (Seat* seat : seats(words)) {
    one_access_reader({seat});
    std::string id = unescape(join(words, 3));
    id.resize(static_cast<std::size_t>(seat->reader.settings.number(Setting::record_length)), ' ');
    if (!seat->reader.access.put(id, number(words[2], 0, 255))) {
      throw Mistake("the access list is full");
    }
  }
  return {};
}

std::string Console::enrol(const Words& words, TimePoint) {
  std::string text;
  for (Seat* seat : seats(words)) {
    one_access_reader({seat});
    make_entries(seat->reader, static_cast<std::size_t>(number(words[2], 0, 32000)), random_);
    text += std::to_string(seat->reader.access.entries().size()) + " entries\n";
  }
  return text;
}

std::string Console::list(const Words& words, TimePoint) {
  std::string text;
  for (const AccessList::Entry& entry : one_access_reader(seats(words)).access.entries()) {
    text += visible(entry.id) + " | " + std::to_string(entry.schedule) + "\n";
  }
  return text;
}

std::string Console::schedule(const Words& words, TimePoint) {
  const Schedules::Schedule& schedule = one_access_reader(seats(words)).schedules.at(number(words[2], 1, 99));
  std::string text;
  for (const std::string& day : schedule.days) {
    text += day + ' ';
  }
  return text + "associated " + std::to_string(schedule.associated) + "\n";
}

std::string Console::log(const Words& words, TimePoint) {
  std::string text;
  for (const std::string& record : seats(words).front()->reader.log.records) {
    text += visible(record) + "\n";
  }
  return text;
}

std::string Console::fill(const Words& words, TimePoint) {
  std::string text;
  for (Seat* seat : seats(words)) {
    Reader& reader = seat->reader;
    if (!record_families.has(reader.family)) {
      throw Mistake("a Vell reader keeps no records");
    }
    const int length = words.size() > 3 ? number(words[3], 1, 500)
                                        : std::max(1, reader.settings.number(Setting::record_length));
    reader.log.records =
        make_records(static_cast<std::size_t>(number(words[2], 0, 40000)), static_cast<std::size_t>(length),
                     reader.protocol_mode ? etx : cr, random_);
    reader.log.next = 0;
    text += std::to_string(reader.log.records.size()) + " records\n";
  }
  return text;
}

}  // namespace readersim
