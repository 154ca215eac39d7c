#include "access/schedule_file.h"

#include "link/numbers.h"

#include <gtest/gtest.h>

namespace {

const std::string zeros(56, '0');

std::string fresh_lines(int count, const std::string& end = "\r\n") {
  std::string text;
  for (int n = 1; n <= count; ++n) {
    text += with_leading_zeros(n, 2) + " 00 " + zeros + end;
  }
  return text;
}

ScheduleTable table_of(const std::string& text) {
  const auto table = ScheduleTable::read(text);
  EXPECT_TRUE(table.has_value());
  return table.value_or(ScheduleTable{});
}

TEST(schedule_layout, day_columns_run_from_7_to_62) {
  EXPECT_EQ(ScheduleColumns::start_time(1).first, 7U);
  EXPECT_EQ(ScheduleColumns::end_time(1).first, 11U);
  EXPECT_EQ(ScheduleColumns::day(7).first, 55U);
  EXPECT_EQ(ScheduleColumns::day(7).first + ScheduleColumns::day(7).width - 1, ScheduleColumns::line_width);
}

TEST(schedule_table, a_fresh_file_written_without_changes) {
  const std::string text = ScheduleTable{}.write();
  EXPECT_EQ(text, fresh_lines(99));
  EXPECT_EQ(text.substr(0, 8), "01 00 00");
  EXPECT_EQ(text.size(), 99U * 64);
}

TEST(schedule_table, reads_99_lines_and_writes_them_back) {
  std::string text = fresh_lines(99);
  text.replace(64 * 4, 62,
               "05 07 0800170008001700080017000800170008001700\xE9\xFF"
               "0000000000  ");
  EXPECT_EQ(table_of(text).write(), text);
}

TEST(schedule_table, a_file_of_98_lines_cannot_be_read) {
  EXPECT_FALSE(ScheduleTable::read(fresh_lines(98)).has_value());
  EXPECT_FALSE(ScheduleTable::read("").has_value());
}

TEST(schedule_table, bare_line_ends_and_a_missing_last_end_are_accepted) {
  EXPECT_EQ(table_of(fresh_lines(99, "\n")).write(), fresh_lines(99));
  std::string text = fresh_lines(99);
  text.resize(text.size() - 2);
  EXPECT_EQ(table_of(text).write(), fresh_lines(99));
}

TEST(schedule_table, lines_after_the_99th_are_not_looked_at) {
  EXPECT_EQ(table_of(fresh_lines(99) + "more\r\n").write(), fresh_lines(99));
}

TEST(schedule_table, blank_and_long_lines_stay_as_they_stand) {
  const std::string text = "\r\n" + fresh_lines(97) + std::string(80, 'x') + "\r\n";
  EXPECT_EQ(table_of(text).write(), text);
}

TEST(schedule_table, texts_are_cut_from_their_columns) {
  std::string text = fresh_lines(99);
  text.replace(64 * 4, 62, "05 07 08001700090018001000190011002000120021001300220014002300");
  const ScheduleTexts texts = table_of(text).texts(5);
  EXPECT_EQ(texts.associated, "07");
  EXPECT_EQ(texts.start[0], "0800");
  EXPECT_EQ(texts.end[0], "1700");
  EXPECT_EQ(texts.start[6], "1400");
  EXPECT_EQ(texts.end[6], "2300");
}

TEST(schedule_table, store_writes_every_day_and_the_associated_schedule) {
  ScheduleTable table;
  ScheduleTexts texts = table.texts(99);
  texts.associated = "7";
  texts.start[0] = "0800";
  texts.end[6] = "2359";
  table.store(99, texts);
  EXPECT_EQ(table.line(99), "99 07 0800" + std::string(48, '0') + "2359");
  EXPECT_EQ(table.write().substr(0, 98 * 64), fresh_lines(98));
}

TEST(schedule_table, a_7_typed_over_0800_yields_7800) {
  ScheduleTable table;
  ScheduleTexts texts = table.texts(1);
  texts.start[0] = "0800";
  table.store(1, texts);
  texts.start[0] = "7";
  table.store(1, texts);
  EXPECT_EQ(table.texts(1).start[0], "7800");
}

TEST(schedule_table, nothing_stored_spills_over_its_columns) {
  ScheduleTable table;
  ScheduleTexts texts = table.texts(1);
  texts.associated = "123";
  texts.start[0] = "123456";
  texts.end[0] = "789012";
  texts.end[6] = "abcdefgh";
  table.store(1, texts);
  EXPECT_EQ(table.line(1), "01 12 12347890" + std::string(44, '0') + "abcd");
}

TEST(schedule_table, an_associated_schedule_of_blanks_or_letters_is_stored_as_00) {
  for (const char* text : {"", "  ", "x"}) {
    ScheduleTable table;
    ScheduleTexts texts = table.texts(1);
    texts.associated = text;
    table.store(1, texts);
    EXPECT_EQ(table.line(1), "01 00 " + zeros);
  }
}

TEST(schedule_table, a_number_outside_1_to_99_is_no_schedule) {
  EXPECT_FALSE(is_schedule_number(0));
  EXPECT_TRUE(is_schedule_number(1));
  EXPECT_TRUE(is_schedule_number(99));
  EXPECT_FALSE(is_schedule_number(100));
}

TEST(schedule_download_read, cuts_what_is_sent) {
  const ScheduleRecord record =
      read_delimited_schedule("05 07 08001700090018001000190011002000120021001300220014002300");
  EXPECT_EQ(record.schedule, "005");
  EXPECT_EQ(record.associated, "007");
  EXPECT_EQ(record.days[0], "08001700");
  EXPECT_EQ(record.days[6], "14002300");
}

TEST(schedule_download_read, no_associated_schedule_is_000) {
  EXPECT_EQ(read_delimited_schedule("05 00 " + zeros).associated, "000");
}

TEST(schedule_download_read, nothing_is_checked) {
  const ScheduleRecord record = read_delimited_schedule("ab cd 99999999" + std::string(48, 'x'));
  EXPECT_EQ(record.schedule, "0ab");
  EXPECT_EQ(record.associated, "0cd");
  EXPECT_EQ(record.days[0], "99999999");
  EXPECT_EQ(record.days[1], "xxxxxxxx");
}

TEST(schedule_download_read, leading_blanks_shift_and_a_comma_cuts) {
  const ScheduleRecord shifted = read_delimited_schedule(" 5 07 " + zeros);
  EXPECT_EQ(shifted.schedule, "05 ");
  const ScheduleRecord cut = read_delimited_schedule("05,07 " + zeros);
  EXPECT_EQ(cut.schedule, "005");
  EXPECT_EQ(cut.associated, "0  ");
  EXPECT_EQ(cut.days[0], "        ");
}

TEST(schedule_download_read, a_file_of_98_lines_downloads_98_schedules) {
  LineReader reader{fresh_lines(98)};
  int count = 0;
  while (const auto line = reader.next_line()) {
    EXPECT_EQ(read_delimited_schedule(*line).schedule, with_leading_zeros(++count, 3));
  }
  EXPECT_EQ(count, 98);
}

}  // namespace
