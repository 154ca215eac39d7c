#include "simulator/ears.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {

using readersim::Heard;
using readersim::NetworkEar;
using readersim::PlainEar;

/// What was heard, one word each: "5:V" a frame, "=V" a plain command, "ACK", "(6)" a frame for the
/// other kind of reader, "~3" three bytes of noise.
std::string told(const std::vector<Heard>& all) {
  std::string text;
  for (const Heard& heard : all) {
    text += text.empty() ? "" : " ";
    switch (heard.kind) {
      case Heard::Kind::command:
        text +=
            (heard.address < 0 ? "" : std::to_string(heard.address) + ":") + (heard.address < 0 ? "=" : "");
        text += heard.text;
        break;
      case Heard::Kind::acknowledge:
        text += "ACK";
        break;
      case Heard::Kind::foreign:
        text += "(" + std::to_string(heard.address) + ")";
        break;
      case Heard::Kind::noise:
        text += "~" + std::to_string(heard.bytes.size());
        break;
    }
  }
  return text;
}

template <typename Ear>
std::string hear(std::string_view bytes) {
  // In one piece and byte by byte: a line has no packets.
  Ear whole;
  Ear single;
  std::vector<Heard> all;
  for (const char& byte : bytes) {
    for (Heard& heard : single.hear({&byte, 1})) {
      all.push_back(std::move(heard));
    }
  }
  EXPECT_EQ(told(all), told(whole.hear(bytes)));
  return told(all);
}

TEST(NetworkEar, hears_frames_with_address_and_text) {
  EXPECT_EQ(hear<NetworkEar>("\x85\x02V\x03"), "5:V");
  EXPECT_EQ(hear<NetworkEar>("\x80\x02\x00U\x03\xFF\x02t\x03"_bytes), std::string("0:\0U 127:t", 10));
  EXPECT_EQ(hear<NetworkEar>("\x85\x02\x03"), "5:");
}

TEST(NetworkEar, hears_acknowledges_between_frames) {
  EXPECT_EQ(hear<NetworkEar>("\x06\x06\x85\x02V\x03\x06"), "ACK ACK 5:V ACK");
}

TEST(NetworkEar, takes_everything_within_a_frame_for_text) {
  EXPECT_EQ(hear<NetworkEar>("\x85\x02"
                             "AC001\xC4\xD6\x06\r\x85\x03"),
            "5:AC001\xC4\xD6\x06\r\x85");
}

TEST(NetworkEar, begins_anew_at_an_address_before_a_start_of_text) {
  EXPECT_EQ(hear<NetworkEar>("\x85\x02}0\x86\x02V\x03"), "~4 6:V");
  EXPECT_EQ(hear<NetworkEar>("\x85\x86\x02V\x03"), "~1 6:V");
  EXPECT_EQ(hear<NetworkEar>("\x85\x02\x02V\x03"), "5:\x02V");
}

TEST(NetworkEar, takes_what_is_no_frame_for_noise) {
  EXPECT_EQ(hear<NetworkEar>("V\r"), "~2");
  EXPECT_EQ(hear<NetworkEar>("\x02V\x03\x85\x02V\x03"), "~3 5:V");
  EXPECT_EQ(hear<NetworkEar>("abc\x06"), "~3 ACK");
  EXPECT_EQ(hear<NetworkEar>("\x85\x06\x02V\x03\r"), "~1 ACK ~4");
}

TEST(NetworkEar, gives_up_on_a_frame_without_end) {
  EXPECT_EQ(hear<NetworkEar>("\x85\x02" + std::string(4094, 'x') + "\x85\x02V\x03"), "~4096 5:V");
}

TEST(NetworkEar, forgets_what_it_heard_half) {
  NetworkEar ear;
  EXPECT_TRUE(ear.hear("\x85\x02}0").empty());
  ear.forget();
  EXPECT_EQ(told(ear.hear("\x03\x85\x02V\x03")), "~1 5:V");
}

TEST(NetworkEar, keeps_the_bytes_as_they_came) {
  NetworkEar ear;
  const auto heard = ear.hear("x\x85\x02V\x03");
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_TRUE(bytes_equal(heard[0].bytes, "x"));
  EXPECT_TRUE(bytes_equal(heard[1].bytes, "\x85\x02V\x03"));
}

TEST(PlainEar, hears_text_up_to_the_end_character) {
  EXPECT_EQ(hear<PlainEar>("V\r"), "=V");
  EXPECT_EQ(hear<PlainEar>("\x00U\rt\r"_bytes), std::string("=\0U =t", 6));
  EXPECT_EQ(hear<PlainEar>("\r"), "=");
}

TEST(PlainEar, hears_acknowledges_before_a_command_and_keeps_them_within) {
  EXPECT_EQ(hear<PlainEar>("\x06\x06V\r\x06"), "ACK ACK =V ACK");
  EXPECT_EQ(hear<PlainEar>("D\x06\r"), "=D\x06");
}

TEST(PlainEar, skips_network_frames) {
  EXPECT_EQ(hear<PlainEar>("\x85\x02V\x03V\r"), "(5) =V");
  EXPECT_EQ(hear<PlainEar>("\xFF\x02\x00U\x03"_bytes), "(127)");
}

TEST(PlainEar, takes_a_network_frame_that_ends_in_cr_for_noise) {
  EXPECT_EQ(hear<PlainEar>("\x85\x02V\rV\r"), "~4 =V");
}

TEST(PlainEar, takes_high_characters_without_a_start_of_text_for_text) {
  EXPECT_EQ(hear<PlainEar>("\xC4\xD6\x02\r"), "=\xC4\xD6\x02");
  EXPECT_EQ(hear<PlainEar>("D\xC4\x02\r"), "=D\xC4\x02");
}

TEST(PlainEar, gives_up_on_a_command_without_end) {
  EXPECT_EQ(hear<PlainEar>(std::string(4096, 'x') + "V\r"), "~4096 =V");
}

TEST(PlainEar, forgets_what_it_heard_half) {
  PlainEar ear;
  EXPECT_TRUE(ear.hear("xyz").empty());
  ear.forget();
  EXPECT_EQ(told(ear.hear("V\r")), "=V");
}

}  // namespace
