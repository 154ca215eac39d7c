#include "simulator/fabricate.h"

#include <array>
#include <string_view>

namespace readersim {
namespace {

constexpr std::string_view ordinary = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz;=?%";

char any_character(Random& random, bool wide) {
  if (wide && random() % 4 == 0) {
    return static_cast<char>(0x80 + random() % 0x80);
  }
  return ordinary[random() % ordinary.size()];
}

std::string digits(std::size_t count, Random& random) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += static_cast<char>('0' + random() % 10);
  }
  return text;
}

void demonstrate_access(Reader& reader, TimePoint now) {
  constexpr std::array staff{"1001", "1002", "1003", "2044", "31007"};
  reader.settings.set(Setting::record_length, "8");
  for (int day = 1; day <= 5; ++day) {
    (void)reader.schedules.put_day(1, day, "08001700");
  }
  (void)reader.schedules.put_day(2, 6, "09001200");
  (void)reader.schedules.put_associated(1, 2);
  int schedule = 0;
  for (std::string id : staff) {
    id.resize(8, ' ');
    (void)reader.access.put(id, schedule++ % 3);
  }
  for (const char* card : {"1001", "2044", "9999"}) {
    (void)swipe(reader, card, now);
  }
}

}  // namespace

std::vector<std::string> make_records(std::size_t count, std::size_t longest, char end, Random& random) {
  std::vector<std::string> records;
  records.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t length = i % 5 == 4 ? longest : 1 + random() % longest;
    std::string record;
    while (record.size() < length) {
      record += i % 3 == 2 && random() % 6 == 0 ? ',' : any_character(random, i % 2 == 1);
    }
    if (i % 7 == 6) {
      record.back() = end;
    }
    if (record == "END") {
      record.back() = 'd';
    }
    records.push_back(std::move(record));
  }
  return records;
}

void make_entries(Reader& reader, std::size_t count, Random& random) {
  const auto length = static_cast<std::size_t>(reader.settings.number(Setting::record_length));
  // Short identifiers run out: then there are only so many to give.
  std::size_t misses = 0;
  for (std::size_t i = 0;
       i < count && misses < 1000 && reader.access.entries().size() < AccessList::capacity;) {
    std::string id = digits(1 + random() % length, random);
    id.resize(length, ' ');
    if (reader.access.schedule_of(id)) {
      ++misses;
      continue;
    }
    misses = 0;
    (void)reader.access.put(id, static_cast<int>(i++ % 100));
  }
}

void make_demonstration(Line& line, TimePoint now) {
  constexpr std::array badges{"4711", "4712", "08154711", "%A;123=9912?"};
  std::size_t next = 0;
  for (const auto& seat : line.seats()) {
    Reader& reader = seat->reader;
    if (access_families.has(reader.family)) {
      demonstrate_access(reader, now);
    } else if (collecting_families.has(reader.family)) {
      for (const char* badge : badges) {
        (void)swipe(reader, badge, now);
      }
    } else if (reader.protocol_mode) {
      (void)swipe(reader, badges.at(next++ % badges.size()), now);
    }
    reset(reader);
  }
}

}  // namespace readersim
