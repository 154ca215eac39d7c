#include "access/access_list.h"

#include "link/click.h"
#include "link/numbers.h"

#include <ctime>
#include <gtest/gtest.h>
#include <random>

namespace {

std::string blanks(std::size_t count) {
  return std::string(count, ' ');
}

std::string line(const std::string& id, const std::string& name, const std::string& schedule) {
  return id + blanks(40 - id.size()) + name + blanks(30 - name.size()) + schedule + "\r\n";
}

QString text(const char* utf8) {
  return QString::fromUtf8(utf8);
}

std::string order_of(const AccessList& list) {
  std::string order;
  for (const ListRow& row : list.rows()) {
    order += row.name.trimmed().toStdString();
  }
  return order;
}

AccessList list_of(const std::string& file) {
  AccessList list;
  list.read(file);
  return list;
}

TEST(access_list, a_row_is_kept_as_the_line_reads) {
  const AccessList list = list_of(line("12345", "Ann", "07") + "678\n\n");
  ASSERT_EQ(list.rows().size(), 3U);
  EXPECT_EQ(list.rows()[0].id.toStdString(), "12345" + blanks(35));
  EXPECT_EQ(list.rows()[0].name.toStdString(), "Ann" + blanks(27));
  EXPECT_EQ(list.rows()[0].schedule.toStdString(), "07");
  EXPECT_EQ(list.rows()[1], (ListRow{text("678"), {}, {}}));
  EXPECT_EQ(list.rows()[2], ListRow{});
}

TEST(access_list, a_file_without_changes_is_written_as_it_was) {
  std::string file = line("12345", "Ann", "07") + line("  1,\"2\"", "M\xFCller, \x80", "99");
  for (int code = 0; code < 256; code += 16) {
    std::string name;
    for (int i = 0; i < 16; ++i) {
      name += code + i == '\n' ? ' ' : static_cast<char>(code + i);
    }
    file += line("1", name, "00");
  }
  EXPECT_EQ(list_of(file).write(), file);
}

TEST(access_list, short_and_bare_lines_are_written_whole) {
  EXPECT_EQ(list_of("1\n\n2").write(), line("1", "", "00") + line("", "", "00") + line("2", "", "00"));
}

TEST(access_list, typed_rows_are_padded_and_cut) {
  AccessList list;
  list.add({text("1234567890123456789012345678901234567890X"), text("1234567890123456789012345678901"),
            text("7")});
  list.add({text("1"), {}, {}});
  EXPECT_EQ(list.write(),
            "1234567890123456789012345678901234567890"
            "123456789012345678901234567890"
            "07\r\n" +
                line("1", "", "00"));
}

TEST(access_list, what_people_type_is_written_in_windows_1252) {
  AccessList list;
  list.add({text("\xC3\xA9\xE2\x82\xAC"), text("\xC5\xA0"), text("1")});
  EXPECT_EQ(list.write(), line("\xE9\x80", "\x8A", "01"));
}

TEST(access_list, a_character_that_the_file_lacks_is_told_with_its_row) {
  AccessList list;
  list.add({text("1"), text("Ann"), {}});
  list.add({text("2"), text("\xD0\x96"), {}});
  try {
    static_cast<void>(list.write());
    FAIL() << "nothing was told";
  } catch (const ClickError& error) {
    EXPECT_STREQ(error.what(),
                 "Row 2: the character \"\xD0\x96\" cannot be saved, it is not in the file's character set");
  }
}

TEST(access_list, a_character_of_two_code_units_is_told_whole) {
  AccessList list;
  list.add({text("1\xF0\x9F\x98\x80"), {}, {}});
  try {
    static_cast<void>(list.write());
    FAIL() << "nothing was told";
  } catch (const ClickError& error) {
    EXPECT_STREQ(error.what(),
                 "Row 1: the character \"\xF0\x9F\x98\x80\" cannot be saved, it is not in the file's "
                 "character set");
  }
}

TEST(access_list, change_sets_id_and_schedule_and_leaves_the_name) {
  AccessList list = list_of(line("1", "Ann", "07"));
  list.change(0, text("2"), text("8"));
  EXPECT_EQ(list.write(), line("2", "Ann", "08"));
  list.change(0, {}, {});
  EXPECT_EQ(list.write(), line("", "Ann", "00"));
}

TEST(access_list, a_removed_row_is_gone) {
  AccessList list = list_of(line("1", "A", "01") + line("2", "B", "02") + line("3", "C", "03"));
  list.remove(1);
  EXPECT_EQ(order_of(list), "AC");
}

TEST(access_list, sorts_as_plain_text) {
  AccessList list =
      list_of(line("9", "A", "01") + line("10", "B", "02") + line("b", "C", "03") + line("B", "D", "03") +
              line(" 1", "E", "00") + line("\xE9", "F", "00") + line("\x8A", "G", "00"));
  list.sort(AccessField::id, false);
  EXPECT_EQ(order_of(list), "EBADCGF");
  list.sort(AccessField::id, true);
  EXPECT_EQ(order_of(list), "FGCDABE");
}

TEST(access_list, equal_texts_keep_their_order_both_ways) {
  AccessList list =
      list_of(line("1", "A", "07") + line("2", "B", "01") + line("3", "C", "07") + line("4", "D", "01"));
  list.sort(AccessField::schedule, false);
  EXPECT_EQ(order_of(list), "BDAC");
  list.sort(AccessField::schedule, true);
  EXPECT_EQ(order_of(list), "ACBD");
}

TEST(access_list, sort_tells_where_each_row_came_from) {
  AccessList list = list_of(line("3", "A", "00") + line("1", "B", "00") + line("2", "C", "00"));
  EXPECT_EQ(list.sort(AccessField::id, false), (std::vector<std::size_t>{1, 2, 0}));
}

TEST(access_list, a_sorted_list_is_written_sorted) {
  AccessList list = list_of(line("1", "A", "09") + line("2", "B", "03"));
  list.sort(AccessField::schedule, false);
  EXPECT_EQ(list.write(), line("2", "B", "03") + line("1", "A", "09"));
}

TEST(access_list, a_row_added_after_a_sort_goes_to_the_end) {
  AccessList list = list_of(line("2", "A", "01") + line("1", "B", "01"));
  list.sort(AccessField::id, false);
  list.add({text("0"), text("C"), {}});
  EXPECT_EQ(order_of(list), "BAC");
}

TEST(access_list, a_hundred_thousand_rows_open_sort_and_save_quickly) {
  std::mt19937 random{7};
  std::string file;
  for (int i = 0; i < 100000; ++i) {
    file += line(std::to_string(random()), "Name " + std::to_string(i), with_leading_zeros(i % 100, 2));
  }
  AccessList list;
  std::clock_t start = std::clock();
  const auto step = [&start] {
    const std::clock_t now = std::clock();
    return static_cast<double>(now - std::exchange(start, now)) / CLOCKS_PER_SEC;
  };
  // Seconds of processor time of a debug build, several times what people get; bench/ measures that.
  constexpr double bound = 4.0;
  list.read(file);
  EXPECT_LT(step(), bound);
  list.sort(AccessField::id, false);
  EXPECT_LT(step(), bound);
  EXPECT_EQ(list.write().size(), file.size());
  EXPECT_LT(step(), bound);
}

}  // namespace
