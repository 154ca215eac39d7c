#include "access/access_file.h"

#include "link/numbers.h"
#include "shell/safe_file.h"

#include <ctime>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::string_literals;

std::string blanks(std::size_t count) {
  return std::string(count, ' ');
}

const std::string full_line = "12345" + blanks(35) + "Ann Miller" + blanks(20) + "07";

TEST(access_layout, columns_follow_each_other_to_72) {
  std::size_t next = 1;
  for (std::size_t i = 0; i < access_columns.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(access_columns[i].field), i);
    EXPECT_EQ(access_columns[i].columns.first, next);
    next += access_columns[i].columns.width;
  }
  EXPECT_EQ(next, 73U);
}

TEST(access_editor_read, every_field_keeps_its_padding) {
  EXPECT_EQ(read_whole_line(full_line), (AccessRow{"12345" + blanks(35), "Ann Miller" + blanks(20), "07"}));
}

TEST(access_editor_read, a_short_line_gives_short_fields) {
  EXPECT_EQ(read_whole_line("12345"), (AccessRow{"12345", "", ""}));
  EXPECT_EQ(read_whole_line(""), (AccessRow{"", "", ""}));
  EXPECT_EQ(read_whole_line(full_line.substr(0, 71)).schedule, "0");
}

TEST(access_editor_read, what_follows_column_72_is_not_shown) {
  EXPECT_EQ(read_whole_line(full_line + "9 and more"), read_whole_line(full_line));
}

TEST(access_editor_read, blanks_commas_and_quotes_stay_where_they_are) {
  const std::string line = "  1,\"2\"" + blanks(33) + "Miller, \"Ann\"" + blanks(17) + " 7";
  EXPECT_EQ(read_whole_line(line),
            (AccessRow{"  1,\"2\"" + blanks(33), "Miller, \"Ann\"" + blanks(17), " 7"}));
}

TEST(access_download_read, takes_id_and_numeric_schedule) {
  EXPECT_EQ(read_delimited_line(full_line), (AccessRecord{"12345" + blanks(35), 7}));
}

TEST(access_download_read, a_line_of_only_an_id_has_schedule_000) {
  const AccessRecord record = read_delimited_line("12345");
  EXPECT_EQ(record, (AccessRecord{"12345" + blanks(35), 0}));
  EXPECT_EQ(with_leading_zeros(record.schedule, 3), "000");
}

TEST(access_download_read, a_comma_in_the_id_leaves_the_part_before_it) {
  EXPECT_EQ(read_delimited_line("12,45" + full_line.substr(5)), (AccessRecord{"12" + blanks(38), 0}));
}

TEST(access_download_read, a_comma_in_the_name_loses_the_schedule) {
  const std::string line = "12345" + blanks(35) + "Miller, Ann" + blanks(19) + "07";
  EXPECT_EQ(read_delimited_line(line), (AccessRecord{"12345" + blanks(35), 0}));
}

TEST(access_download_read, leading_blanks_shift_the_line) {
  const AccessRecord record = read_delimited_line("  " + full_line.substr(0, 70));
  EXPECT_EQ(record.id, "12345" + blanks(35));
  EXPECT_EQ(record.schedule, 0);  // the columns of the schedule hold what stood two to the right: nothing
  EXPECT_EQ(read_delimited_line(" " + full_line.substr(0, 69) + "085").schedule, 85);
}

TEST(access_download_read, quotes_enclose_the_whole_line) {
  EXPECT_EQ(read_delimited_line('"' + full_line + '"'), (AccessRecord{"12345" + blanks(35), 7}));
  EXPECT_EQ(read_delimited_line("\"1,2\"" + full_line.substr(5)), (AccessRecord{"1,2" + blanks(37), 0}));
}

TEST(access_download_read, a_blank_line_is_a_record_of_blanks) {
  EXPECT_EQ(read_delimited_line(""), (AccessRecord{blanks(40), 0}));
  EXPECT_EQ(read_delimited_line(blanks(72)), (AccessRecord{blanks(40), 0}));
}

TEST(access_download_read, a_schedule_that_is_no_number_is_0) {
  EXPECT_EQ(read_delimited_line(full_line.substr(0, 70) + "xx").schedule, 0);
  EXPECT_EQ(read_delimited_line(full_line.substr(0, 70) + "5x").schedule, 5);
  EXPECT_EQ(read_delimited_line(full_line.substr(0, 70) + " 5").schedule, 5);
}

TEST(access_write, a_row_read_whole_writes_the_line_it_came_from) {
  EXPECT_EQ(access_line(read_whole_line(full_line)), full_line);
}

TEST(access_write, bytes_stay_bytes) {
  const std::string line = "\x01\x80\xE9\xFF" + blanks(36) +
                           "Z\xFC"
                           "rich\0end"s +
                           blanks(20) + "12";
  ASSERT_EQ(line.size(), 72U);
  EXPECT_EQ(access_line(read_whole_line(line)), line);
}

TEST(access_write, a_name_longer_than_30_is_cut_at_30) {
  const std::string name(35, 'n');
  EXPECT_EQ(access_line({"1", name, "7"}), "1" + blanks(39) + std::string(30, 'n') + "07");
}

TEST(access_write, an_id_longer_than_40_is_cut_at_40) {
  EXPECT_EQ(access_line({std::string(45, '1'), "n", "7"}), std::string(40, '1') + "n" + blanks(29) + "07");
}

TEST(access_write, a_schedule_is_written_by_its_numeric_value_in_two_digits) {
  EXPECT_EQ(access_line({"1", "", "7"}).substr(70), "07");
  EXPECT_EQ(access_line({"1", "", ""}).substr(70), "00");
  EXPECT_EQ(access_line({"1", "", "  "}).substr(70), "00");
  EXPECT_EQ(access_line({"1", "", "x"}).substr(70), "00");
  EXPECT_EQ(access_line({"1", "", "99"}).substr(70), "99");
}

TEST(access_upload, the_last_character_is_the_schedule) {
  EXPECT_EQ(uploaded_access_line("12345\x07"), "12345" + blanks(65) + "07");
  EXPECT_EQ(uploaded_access_line("12345\x0D"), "12345" + blanks(65) + "13");
  EXPECT_EQ(uploaded_access_line("12345\0"s), "12345" + blanks(65) + "00");
}

TEST(access_upload, a_record_of_one_character_has_no_id) {
  EXPECT_EQ(uploaded_access_line("\x07"), blanks(70) + "07");
}

TEST(access_upload, a_code_of_100_or_more_takes_three_digits) {
  EXPECT_EQ(uploaded_access_line("12345\x64"), "12345" + blanks(65) + "100");
  EXPECT_EQ(uploaded_access_line("12345\xFF").substr(70), "255");
  EXPECT_EQ(uploaded_access_line("12345\xFF").size(), 73U);
}

TEST(access_upload, an_overlong_id_is_cut_at_the_schedule) {
  EXPECT_EQ(uploaded_access_line(std::string(80, '1') + "\x07"), std::string(70, '1') + "07");
}

TEST(access_speed, a_hundred_thousand_lines_are_read_and_written_quickly) {
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text += access_line({std::to_string(i), "Name " + std::to_string(i), "7"}) += line_end;
  }
  const std::clock_t start = std::clock();
  LineReader reader{text};
  std::vector<AccessRow> rows;
  while (const auto line = reader.next_line()) {
    rows.push_back(read_whole_line(*line));
  }
  std::string written;
  for (const AccessRow& row : rows) {
    written += access_line(row) += line_end;
  }
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  EXPECT_EQ(rows.size(), 100000U);
  EXPECT_EQ(written, text);
  EXPECT_LT(seconds, 4.0);  // of a debug build; bench/ measures what people get
}

}  // namespace
