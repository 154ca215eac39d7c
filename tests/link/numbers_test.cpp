#include "link/numbers.h"

#include "link/click.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace {

std::string why_not_int16(std::string_view text) {
  try {
    static_cast<void>(to_int16(text));
  } catch (const ClickError& error) {
    return error.what();
  }
  return "no failure";
}

TEST(leading_number, takes_the_digits_a_text_begins_with) {
  EXPECT_EQ(leading_number("12"), 12);
  EXPECT_EQ(leading_number("12ab"), 12);
  EXPECT_EQ(leading_number("12 34"), 12);
  EXPECT_EQ(leading_number("12.9"), 12);
  EXPECT_EQ(leading_number("007"), 7);
}

TEST(leading_number, an_exponent_is_not_read) {
  EXPECT_EQ(leading_number("1e3"), 1);
}

TEST(leading_number, skips_leading_blanks) {
  EXPECT_EQ(leading_number("   7"), 7);
}

TEST(leading_number, takes_one_sign) {
  EXPECT_EQ(leading_number("-5"), -5);
  EXPECT_EQ(leading_number("+5"), 5);
  EXPECT_EQ(leading_number("--5"), std::nullopt);
  EXPECT_EQ(leading_number("- 5"), std::nullopt);
}

TEST(leading_number, a_text_without_one_has_none) {
  for (const char* text : {"", " ", "abc", "-", "+", ".5", "&H10", "$1"}) {
    EXPECT_EQ(leading_number(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(leading_number, is_held_at_the_ends_of_its_range) {
  EXPECT_EQ(leading_number("99999999999999999999"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(leading_number("-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
}

TEST(number_or_zero, no_leading_number_is_zero) {
  EXPECT_EQ(number_or_zero(""), 0);
  EXPECT_EQ(number_or_zero("abc"), 0);
  EXPECT_EQ(number_or_zero("12abc"), 12);
}

TEST(to_int16, takes_the_whole_range) {
  EXPECT_EQ(to_int16("32767"), 32767);
  EXPECT_EQ(to_int16("-32768"), -32768);
  EXPECT_EQ(to_int16(" 0 "), 0);
}

TEST(to_int16, beyond_the_range_is_an_overflow) {
  EXPECT_EQ(why_not_int16("32768"), "Overflow");
  EXPECT_EQ(why_not_int16("-32769"), "Overflow");
  EXPECT_EQ(why_not_int16("99999999999999999999"), "Overflow");
}

TEST(to_int16, no_number_is_a_type_mismatch) {
  EXPECT_EQ(why_not_int16(""), "Type mismatch");
  EXPECT_EQ(why_not_int16("  "), "Type mismatch");
  EXPECT_EQ(why_not_int16("abc"), "Type mismatch");
  EXPECT_EQ(why_not_int16("-"), "Type mismatch");
}

TEST(to_int16, a_number_with_anything_behind_it_is_a_type_mismatch) {
  for (const char* const text :
       {"1,000", "5x", "5-9", "12 34", "12.9", "1e3", "5-", "99999999999999999999x"}) {
    EXPECT_EQ(why_not_int16(text), "Type mismatch") << text;
  }
}

TEST(to_int16_or_zero_when_empty, only_an_empty_text_is_zero) {
  EXPECT_EQ(to_int16_or_zero_when_empty(""), 0);
  EXPECT_EQ(to_int16_or_zero_when_empty("  "), 0);
  EXPECT_EQ(to_int16_or_zero_when_empty("15"), 15);
  EXPECT_THROW(static_cast<void>(to_int16_or_zero_when_empty("abc")), ClickError);
  EXPECT_THROW(static_cast<void>(to_int16_or_zero_when_empty("32768")), ClickError);
}

TEST(trimmed, takes_the_blanks_off_both_ends) {
  EXPECT_EQ(trimmed("  a b  "), "a b");
  EXPECT_EQ(trimmed("ab"), "ab");
  EXPECT_EQ(trimmed("   "), "");
  EXPECT_EQ(trimmed(""), "");
}

TEST(with_leading_zeros, fills_up_to_the_width) {
  EXPECT_EQ(with_leading_zeros(5, 3), "005");
  EXPECT_EQ(with_leading_zeros(0, 2), "00");
  EXPECT_EQ(with_leading_zeros(2001, 4), "2001");
}

TEST(with_leading_zeros, never_cuts_a_longer_number) {
  EXPECT_EQ(with_leading_zeros(1234, 3), "1234");
}

TEST(with_leading_zeros, puts_the_sign_before_the_zeros) {
  EXPECT_EQ(with_leading_zeros(-5, 3), "-005");
}

}  // namespace
