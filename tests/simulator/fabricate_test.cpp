#include "simulator/fabricate.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using readersim::make_records;
using readersim::Random;

TEST(MadeUpRecords, are_the_same_for_the_same_seed) {
  Random one{7};
  Random same{7};
  Random other{8};
  const auto records = make_records(100, 40, '\x03', one);
  EXPECT_EQ(records, make_records(100, 40, '\x03', same));
  EXPECT_NE(records, make_records(100, 40, '\x03', other));
}

TEST(MadeUpRecords, hold_everything_that_is_hard_to_carry_and_nothing_that_cannot_be) {
  Random random{1};
  const auto records = make_records(20000, 150, '\x03', random);
  ASSERT_EQ(records.size(), 20000U);
  const auto count = [&](auto what) { return std::count_if(records.begin(), records.end(), what); };
  EXPECT_GT(count([](const std::string& r) { return r.ends_with('\x03'); }), 2000);
  EXPECT_GT(count([](const std::string& r) { return r.find(',') != std::string::npos; }), 2000);
  EXPECT_GT(count([](const std::string& r) { return r.size() == 150; }), 2000);
  EXPECT_GT(count([](const std::string& r) {
              return std::any_of(r.begin(), r.end(),
                                 [](char c) { return static_cast<unsigned char>(c) > 127; });
            }),
            2000);
  for (const std::string& record : records) {
    ASSERT_FALSE(record.empty());
    ASSERT_LE(record.size(), 150U);
    ASSERT_NE(record, "END");
    // Within a record an end character would end the reply.
    ASSERT_TRUE(std::all_of(record.begin(), record.end() - 1,
                            [](char c) { return static_cast<unsigned char>(c) >= 0x20; }));
  }
}

TEST(MadeUpEntries, are_new_ones_with_all_schedules_in_turn) {
  Random random{1};
  readersim::Reader reader{readersim::Family::orin, 5, 1};
  ASSERT_TRUE(reader.access.put("1         ", 50));
  readersim::make_entries(reader, 200, random);
  const auto& entries = reader.access.entries();
  ASSERT_EQ(entries.size(), 201U);
  std::set<std::string> ids;
  for (std::size_t i = 1; i < entries.size(); ++i) {
    EXPECT_EQ(entries[i].schedule, static_cast<int>((i - 1) % 100));
    EXPECT_EQ(entries[i].id.size(), 10U);
    ids.insert(entries[i].id);
  }
  EXPECT_EQ(ids.size(), 200U);
}

TEST(MadeUpEntries, end_where_the_identifiers_run_out) {
  Random random{1};
  readersim::Reader reader{readersim::Family::orin, 5, 1};
  reader.settings.set(readersim::Setting::record_length, "2");
  readersim::make_entries(reader, 5000, random);
  EXPECT_LE(reader.access.entries().size(), 110U);
  EXPECT_GT(reader.access.entries().size(), 100U);
}

}  // namespace
