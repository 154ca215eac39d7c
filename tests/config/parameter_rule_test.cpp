#include "config/parameter_rule.h"

#include "link/click.h"

#include <gtest/gtest.h>

namespace {

constexpr ParameterLimit no_limit{};
constexpr ParameterLimit speaker{49, "Max speaker value can be 49"};
constexpr ParameterLimit address{126, "Max reader address can be 126"};
constexpr ParameterLimit prefix{0, "Must set a prefix"};

std::string refusal_of(ParameterRule rule, std::string_view text, const ParameterLimit& limit) {
  try {
    return "sent " + parameter_text(rule, text, limit);
  } catch (const ClickError& error) {
    return error.what();
  }
}

TEST(parameter_rule, two_digits_fill_up_and_take_an_empty_box_as_zero) {
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "", no_limit), "00");
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, " ", no_limit), "00");
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "  ", no_limit), "00");
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "7", no_limit), "07");
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "42", no_limit), "42");
}

TEST(parameter_rule, lengths_count_blanks_that_stand_beside_a_digit) {
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, " 7", no_limit), " 7");
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "7 ", no_limit), "7 ");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, " 5", address), "0 5");
}

TEST(parameter_rule, speaker_49_passes_and_50_is_refused) {
  EXPECT_EQ(parameter_text(ParameterRule::two_digits, "49", speaker), "49");
  EXPECT_EQ(refusal_of(ParameterRule::two_digits, "50", speaker), "Max speaker value can be 49");
  EXPECT_EQ(refusal_of(ParameterRule::two_digits, "99", speaker), "Max speaker value can be 49");
}

TEST(parameter_rule, three_digits_fill_up_and_take_an_empty_box_as_zero) {
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "", address), "000");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "   ", address), "000");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "5", address), "005");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "42", address), "042");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "126", address), "126");
}

TEST(parameter_rule, address_127_is_refused) {
  EXPECT_EQ(refusal_of(ParameterRule::three_digits, "127", address), "Max reader address can be 126");
  EXPECT_EQ(refusal_of(ParameterRule::three_digits, "999", address), "Max reader address can be 126");
}

TEST(parameter_rule, an_address_counts_by_the_number_it_begins_with_and_goes_as_it_stands) {
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "1a", address), "01a");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "a", address), "00a");
  EXPECT_EQ(parameter_text(ParameterRule::three_digits, "abc", address), "abc");
}

TEST(parameter_rule, a_prefix_is_the_code_of_its_character) {
  EXPECT_EQ(parameter_text(ParameterRule::prefix_code, "A", prefix), "065");
  EXPECT_EQ(parameter_text(ParameterRule::prefix_code, "*", prefix), "042");
  EXPECT_EQ(parameter_text(ParameterRule::prefix_code, "~", prefix), "126");
  EXPECT_EQ(parameter_text(ParameterRule::prefix_code, "\xFC", prefix), "252");
}

TEST(parameter_rule, a_prefix_that_is_empty_or_one_blank_is_refused) {
  EXPECT_EQ(refusal_of(ParameterRule::prefix_code, "", prefix), "Must set a prefix");
  EXPECT_EQ(refusal_of(ParameterRule::prefix_code, " ", prefix), "Must set a prefix");
}

}  // namespace
