#include "access/columns.h"

#include "link/numbers.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::string_literals;

std::vector<std::string> lines_of(std::string text) {
  LineReader reader{std::move(text)};
  std::vector<std::string> lines;
  while (const auto line = reader.next_line()) {
    lines.emplace_back(*line);
  }
  return lines;
}

using Lines = std::vector<std::string>;

TEST(columns, cut_counts_from_one) {
  EXPECT_EQ(cut_columns("abcdef", {1, 2}), "ab");
  EXPECT_EQ(cut_columns("abcdef", {6, 1}), "f");
}

TEST(columns, cut_of_a_line_that_ends_early_gives_what_is_there) {
  EXPECT_EQ(cut_columns("abcdef", {5, 4}), "ef");
  EXPECT_EQ(cut_columns("abcdef", {7, 4}), "");
  EXPECT_EQ(cut_columns("", {1, 4}), "");
}

TEST(columns, store_of_a_short_text_replaces_only_its_characters) {
  std::string line = "..0800..";
  store_in_columns(line, {3, 4}, "7");
  EXPECT_EQ(line, "..7800..");
  store_in_columns(line, {3, 4}, "");
  EXPECT_EQ(line, "..7800..");
}

TEST(columns, store_of_a_long_text_never_spills) {
  std::string line = "..0800..";
  store_in_columns(line, {3, 4}, "123456");
  EXPECT_EQ(line, "..1234..");
}

TEST(columns, store_into_a_short_line_pads_it_with_blanks) {
  std::string line = "0";
  store_in_columns(line, {4, 4}, "12");
  EXPECT_EQ(line, "0  12  ");
}

TEST(columns, numeric_value_is_the_leading_digits) {
  EXPECT_EQ(numeric_value("07"), 7);
  EXPECT_EQ(numeric_value("99"), 99);
  EXPECT_EQ(numeric_value(" 7"), 7);
  EXPECT_EQ(numeric_value("7x"), 7);
  EXPECT_EQ(numeric_value("1e3"), 1);
  EXPECT_EQ(numeric_value("12.5"), 12);
}

TEST(columns, numeric_value_of_blanks_letters_or_nothing_is_zero) {
  EXPECT_EQ(numeric_value(""), 0);
  EXPECT_EQ(numeric_value("  "), 0);
  EXPECT_EQ(numeric_value("ab"), 0);
  EXPECT_EQ(numeric_value("x7"), 0);
}

TEST(columns, numeric_value_never_fails) {
  EXPECT_EQ(numeric_value("99999999999999999999"), 32767);
}

TEST(columns, with_leading_zeros_number_of_more_digits_keeps_them) {
  EXPECT_EQ(with_leading_zeros(7, 2), "07");
  EXPECT_EQ(with_leading_zeros(100, 2), "100");
  EXPECT_EQ(with_leading_zeros(0, 5), "00000");
}

TEST(lines, both_ends_are_accepted_and_the_last_may_be_missing) {
  EXPECT_EQ(lines_of(""), Lines{});
  EXPECT_EQ(lines_of("a\r\nb\r\n"), (Lines{"a", "b"}));
  EXPECT_EQ(lines_of("a\nb\n"), (Lines{"a", "b"}));
  EXPECT_EQ(lines_of("a\r\nb"), (Lines{"a", "b"}));
  EXPECT_EQ(lines_of("a\r\nb\r"), (Lines{"a", "b"}));
}

TEST(lines, a_blank_line_is_a_line) {
  EXPECT_EQ(lines_of("\r\n"), Lines{""});
  EXPECT_EQ(lines_of("a\r\n\r\nb\n\n"), (Lines{"a", "", "b", ""}));
}

TEST(lines, all_other_bytes_stay) {
  EXPECT_EQ(lines_of("a\0\x1A\xFF\rb\r\r\n"s), (Lines{"a\0\x1A\xFF\rb\r"s}));
}

TEST(field, leading_blanks_are_skipped_and_trailing_ones_stay) {
  EXPECT_EQ(delimited_field("   12 34  "), "12 34  ");
  EXPECT_EQ(delimited_field("    "), "");
  EXPECT_EQ(delimited_field(""), "");
}

TEST(field, a_comma_ends_it_and_drops_the_rest) {
  EXPECT_EQ(delimited_field("12,34"), "12");
  EXPECT_EQ(delimited_field(",34"), "");
  EXPECT_EQ(delimited_field("12 ,\"34\""), "12 ");
}

TEST(field, quotes_enclose_it_commas_and_leading_blanks_included) {
  EXPECT_EQ(delimited_field("\"12,34\""), "12,34");
  EXPECT_EQ(delimited_field("  \"  12,34 \""), "  12,34 ");
}

TEST(field, text_after_the_closing_quote_is_dropped) {
  EXPECT_EQ(delimited_field("\"12\"34,56"), "12");
  EXPECT_EQ(delimited_field("\"\"12"), "");
}

TEST(field, an_open_quote_takes_the_rest_of_the_line) {
  EXPECT_EQ(delimited_field("\"12,34 "), "12,34 ");
}

TEST(field, a_quote_within_it_is_a_character) {
  EXPECT_EQ(delimited_field("12\"34\"5"), "12\"34\"5");
  EXPECT_EQ(delimited_field("12\"3,4\""), "12\"3");
}

}  // namespace
