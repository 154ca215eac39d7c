#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::AccessList;
using readersim::Family;
using readersim::Schedules;
using readersim::Setting;

class AccessReader : public Host, public testing::Test {
 protected:
  readersim::Reader& reader = line.add(Family::orin, 5, true).reader;
  Host plain_line;
  readersim::Reader& plain = plain_line.line.add(Family::orinta, 0, false).reader;
};

TEST_F(AccessReader, answers_a_stored_entry_with_the_letter_A) {
  EXPECT_TRUE(bytes_equal(ask(5, "AC0071234567890"),
                          "\x06\x02"
                          "A\x03"));
  EXPECT_TRUE(bytes_equal(plain_line.tell("AC0071234567890"), "A\r"));
  ASSERT_EQ(reader.access.entries().size(), 1U);
  EXPECT_EQ(reader.access.entries()[0].id, "1234567890");
  EXPECT_EQ(reader.access.entries()[0].schedule, 7);
  EXPECT_EQ(plain.access.schedule_of("1234567890"), 7);
}

TEST_F(AccessReader, cuts_and_pads_an_identifier_at_its_record_length) {
  ask(5, "\\04");
  ask(5, "AC0001234567890");
  ask(5, "AC00112");
  ASSERT_EQ(reader.access.entries().size(), 2U);
  EXPECT_EQ(reader.access.entries()[0].id, "1234");
  EXPECT_EQ(reader.access.entries()[1].id, "12  ");
}

TEST_F(AccessReader, gives_a_known_identifier_its_new_schedule_in_its_old_place) {
  ask(5, "AC0011111111111");
  ask(5, "AC0022222222222");
  ask(5, "AC0031111111111");
  ASSERT_EQ(reader.access.entries().size(), 2U);
  EXPECT_EQ(reader.access.entries()[0].schedule, 3);
}

TEST_F(AccessReader, answers_N_to_a_malformed_entry_and_stores_nothing) {
  for (const char* command : {"AC", "AC00", "AC0x71234567890", "AC2561234567890", "AC007"}) {
    EXPECT_EQ(data(ask(5, command)), "N") << command;
  }
  EXPECT_TRUE(reader.access.entries().empty());
}

TEST_F(AccessReader, answers_another_letter_on_request_and_then_stores_nothing) {
  reader.verdict_letter = 'X';
  reader.verdict_times = 2;
  EXPECT_EQ(data(ask(5, "AC0071234567890")), "X");
  EXPECT_EQ(data(ask(5, "SS001000")), "X");
  EXPECT_EQ(data(ask(5, "AC0071234567890")), "A");
  EXPECT_EQ(reader.access.entries().size(), 1U);
}

TEST_F(AccessReader, stores_a_broadcast_entry_without_an_answer) {
  EXPECT_TRUE(bytes_equal(ask(127, "AN0091234567890"), ""));
  EXPECT_EQ(reader.access.schedule_of("1234567890"), 9);
}

TEST_F(AccessReader, refuses_what_no_longer_fits) {
  for (std::size_t i = 0; i < AccessList::capacity; ++i) {
    ASSERT_TRUE(reader.access.put(std::to_string(i), 0));
  }
  EXPECT_EQ(data(ask(5, "AC007abcdefghij")), "N");
  EXPECT_EQ(data(ask(5, "AC007abcdefghij")), "N");
  EXPECT_EQ(reader.access.entries().size(), AccessList::capacity);
  EXPECT_TRUE(reader.access.put("17", 5));  // a change needs no room
}

TEST_F(AccessReader, keeps_bytes_above_127_in_identifiers) {
  ask(5, "AC001\xC4\xD6\xDC 4567890");
  EXPECT_EQ(reader.access.entries().at(0).id, "\xC4\xD6\xDC 456789");
}

TEST_F(AccessReader, uploads_the_list_entry_by_entry_and_then_END) {
  ask(5, "\\05");
  ask(5, "AC00712345");
  ask(5, "AC00054321");
  for (int round = 0; round < 2; ++round) {  // "ur" starts again from the top
    EXPECT_TRUE(bytes_equal(ask(5, "ur"), "\x06"));
    EXPECT_TRUE(bytes_equal(ask(5, "u"),
                            "\x06\x02"
                            "12345\x07\x03"));
    EXPECT_TRUE(bytes_equal(ask(5, "u"),
                            "\x06\x02"
                            "54321\x00\x03"_bytes));
    EXPECT_TRUE(bytes_equal(ask(5, "u"),
                            "\x06\x02"
                            "END\x03"));
  }
}

TEST_F(AccessReader, uploads_on_a_plain_line_without_acknowledges) {
  plain_line.tell("AC0071234567890");
  EXPECT_TRUE(bytes_equal(plain_line.tell("ur"), ""));
  EXPECT_TRUE(bytes_equal(plain_line.tell("u"), "1234567890\x07\r"));
  EXPECT_TRUE(bytes_equal(plain_line.tell("u"), "END\r"));
}

TEST_F(AccessReader, every_schedule_code_travels_as_one_character_and_an_end_character_as_a_pair) {
  for (int code = 0; code < 100; ++code) {
    reader.access.clear();
    plain.access.clear();
    ASSERT_TRUE(reader.access.put("1234567890", code));
    ASSERT_TRUE(plain.access.put("1234567890", code));
    ask(5, "ur");
    plain_line.tell("ur");
    const std::string record = "1234567890" + std::string(1, static_cast<char>(code));
    EXPECT_TRUE(bytes_equal(ask(5, "u"), "\x06\x02" + record + "\x03"));
    EXPECT_TRUE(bytes_equal(plain_line.tell("u"), record + "\r"));
  }
}

TEST_F(AccessReader, clears_the_list_and_the_log_on_their_own) {
  ask(5, "AC0001234567890");
  reader.log.records = {"one", "two"};
  EXPECT_TRUE(bytes_equal(ask(5, "cd"), "\x06"));
  EXPECT_TRUE(reader.access.entries().empty());
  EXPECT_EQ(reader.log.records.size(), 2U);
  EXPECT_TRUE(bytes_equal(ask(5, "cl"), "\x06"));
  EXPECT_TRUE(reader.log.records.empty());
  EXPECT_TRUE(bytes_equal(plain_line.tell("cd"), ""));
  EXPECT_TRUE(bytes_equal(ask(127, "cl"), ""));
}

TEST_F(AccessReader, a_new_record_length_deletes_all_data) {
  ask(5, "AC0001234567890");
  ask(5, "SA001108001700");
  reader.log.records = {"one"};
  ask(5, "\\12");
  EXPECT_TRUE(reader.access.entries().empty());
  EXPECT_EQ(reader.schedules.at(1).days[0], "00000000");
  EXPECT_TRUE(reader.log.records.empty());
}

TEST_F(AccessReader, stores_a_schedule_day_by_day_with_its_associated_schedule) {
  EXPECT_TRUE(bytes_equal(ask(5, "SA005108001700"),
                          "\x06\x02"
                          "A\x03"));
  EXPECT_TRUE(bytes_equal(plain_line.tell("SA099700002359"), "A\r"));
  EXPECT_EQ(data(ask(5, "SS005007")), "A");
  EXPECT_EQ(reader.schedules.at(5).days[0], "08001700");
  EXPECT_EQ(reader.schedules.at(5).days[1], "00000000");
  EXPECT_EQ(reader.schedules.at(5).associated, 7);
  EXPECT_EQ(plain.schedules.at(99).days[6], "00002359");
  EXPECT_EQ(data(ask(5, "SS005000")), "A");
  EXPECT_EQ(reader.schedules.at(5).associated, 0);
}

TEST_F(AccessReader, answers_N_to_a_schedule_that_is_none) {
  for (const char* command :
       {"SA", "SA000108001700", "SA100108001700", "SA005008001700", "SA005808001700", "SA005124001700",
        "SA005108602400", "SA00510800170", "SA0051080017xx", "SS005", "SS000000", "SS005100", "SS00500x"}) {
    EXPECT_EQ(data(ask(5, command)), "N") << command;
  }
}

TEST_F(AccessReader, no_other_family_has_any_of_it) {
  for (const Family family : {Family::vell, Family::ferro_kesh, Family::glint_kesh, Family::quor}) {
    Host host;
    host.line.add(family, 5, true);
    for (const char* command :
         {"AC0071234567890", "AN0071234567890", "SA005108001700", "SS005007", "ur", "u", "cd"}) {
      EXPECT_TRUE(bytes_equal(host.ask(5, command), "")) << command;
    }
  }
}

TEST(ScheduleDecision, lets_in_within_the_window_of_the_day_both_ends_included) {
  Schedules schedules;
  ASSERT_TRUE(schedules.put_day(3, 2, "08001730"));
  EXPECT_TRUE(schedules.allows(3, 2, 8 * 60));
  EXPECT_TRUE(schedules.allows(3, 2, 17 * 60 + 30));
  EXPECT_FALSE(schedules.allows(3, 2, 8 * 60 - 1));
  EXPECT_FALSE(schedules.allows(3, 2, 17 * 60 + 31));
  EXPECT_FALSE(schedules.allows(3, 1, 12 * 60));
}

TEST(ScheduleDecision, schedule_0_always_lets_in_and_an_empty_one_never) {
  const Schedules schedules;
  EXPECT_TRUE(schedules.allows(0, 1, 0));
  EXPECT_FALSE(schedules.allows(1, 1, 0));
  EXPECT_FALSE(schedules.allows(100, 1, 0));
}

TEST(ScheduleDecision, a_window_that_ends_before_it_starts_is_empty) {
  Schedules schedules;
  ASSERT_TRUE(schedules.put_day(1, 1, "22000600"));
  EXPECT_FALSE(schedules.allows(1, 1, 23 * 60));
  EXPECT_FALSE(schedules.allows(1, 1, 60));
}

TEST(ScheduleDecision, asks_associated_schedules_down_the_chain_and_not_in_circles) {
  Schedules schedules;
  ASSERT_TRUE(schedules.put_day(9, 6, "09001200"));
  ASSERT_TRUE(schedules.put_associated(1, 5));
  ASSERT_TRUE(schedules.put_associated(5, 9));
  EXPECT_TRUE(schedules.allows(1, 6, 600));
  ASSERT_TRUE(schedules.put_associated(9, 1));
  EXPECT_FALSE(schedules.allows(1, 7, 600));
}

}  // namespace
