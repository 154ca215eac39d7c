#include "simulator/answer.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {

using readersim::Answer;
using readersim::answer_for;
using readersim::Family;
using readersim::Reader;
using readersim::Verdict;
using Kind = readersim::Verdict::Kind;

const Reader reader{Family::orin, 42, 1};

Verdict verdict(Kind kind, std::string data = {}, char state = 0) {
  return {kind, std::move(data), state, "what it was"};
}

TEST(Answer, to_a_refused_command_is_none) {
  EXPECT_TRUE(answer_for(reader, verdict(Kind::refused), true).bytes.empty());
  EXPECT_TRUE(answer_for(reader, verdict(Kind::refused), false).bytes.empty());
}

TEST(Answer, to_an_obeyed_command_is_one_acknowledge_on_the_network_only) {
  const Answer answer = answer_for(reader, verdict(Kind::done), true);
  EXPECT_TRUE(bytes_equal(answer.text(), "\x06"));
  EXPECT_TRUE(answer.has_ack);
  EXPECT_EQ(answer.meaning, "acknowledge");
  EXPECT_TRUE(answer_for(reader, verdict(Kind::done), false).bytes.empty());
}

TEST(Answer, with_data_stands_between_lead_in_and_end) {
  const Answer network = answer_for(reader, verdict(Kind::data, "0102031230"), true);
  EXPECT_TRUE(bytes_equal(network.text(),
                          "\x06\x02"
                          "0102031230\x03"));
  EXPECT_TRUE(network.has_ack);
  EXPECT_EQ(network.meaning, "what it was");
  const Answer plain = answer_for(reader, verdict(Kind::data, "0102031230"), false);
  EXPECT_TRUE(bytes_equal(plain.text(), "0102031230\r"));
  EXPECT_FALSE(plain.has_ack);
}

TEST(Answer, makes_a_pair_of_a_last_character_that_equals_the_end) {
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data, "12\x03"), true).text(),
                          "\x06\x02"
                          "12\x03\x03"));
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data, "12\r"), false).text(), "12\r\r"));
  // Each kind of line has its own end character: the other's is data.
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data, "12\r"), true).text(),
                          "\x06\x02"
                          "12\r\x03"));
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data, "12\x03"), false).text(), "12\x03\r"));
}

TEST(Answer, without_a_character_of_data_is_still_framed) {
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data), true).text(), "\x06\x02\x03"));
  EXPECT_TRUE(bytes_equal(answer_for(reader, verdict(Kind::data), false).text(), "\r"));
}

TEST(Answer, to_a_poll_bears_the_address_byte_and_the_state_second) {
  const Answer answer = answer_for(reader, verdict(Kind::poll, "A", '\x01'), true);
  EXPECT_TRUE(bytes_equal(answer.text(),
                          "\x06\xAA\x01"
                          "A\x03"));
  ASSERT_TRUE(answer.address_at.has_value());
  EXPECT_EQ(answer.bytes.at(*answer.address_at).byte, '\xAA');
}

TEST(Collision, is_the_and_of_all_bytes_as_long_as_the_longest) {
  const Answer one = answer_for(reader, verdict(Kind::data, "A"), true);
  const Answer other = answer_for(reader, verdict(Kind::data, "BCD"), true);
  const Answer both = readersim::collide({one, other});
  EXPECT_TRUE(bytes_equal(both.text(),
                          "\x06\x02@\x03"
                          "D\x03"));
  EXPECT_EQ(both.meaning, "collision of 2 answers");
}

}  // namespace
