#include "link/frame.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {

TEST(frame, plain_is_command_and_cr) {
  EXPECT_TRUE(bytes_equal(plain_frame("V"), "V\r"_bytes));
}

TEST(frame, network_is_address_byte_stx_command_etx) {
  EXPECT_TRUE(bytes_equal(network_frame(0x85, introduced("ITP")), "\x85\x02\x00ITP\x03"_bytes));
}

TEST(frame, the_global_address_is_0xff) {
  EXPECT_TRUE(bytes_equal(network_frame(address_byte_of(global_address), "V"), "\xFF\x02V\x03"_bytes));
}

TEST(frame, an_introduced_command_begins_with_nul) {
  EXPECT_TRUE(bytes_equal(introduced("ITP"), "\0ITP"_bytes));
  EXPECT_TRUE(bytes_equal(introduced(""), "\0"_bytes));
}

TEST(frame, an_empty_command_is_framed_all_the_same) {
  EXPECT_TRUE(bytes_equal(plain_frame(""), "\r"_bytes));
  EXPECT_TRUE(bytes_equal(network_frame(0x80, ""), "\x80\x02\x03"_bytes));
}

TEST(frame, bytes_of_a_command_go_out_as_they_are) {
  EXPECT_TRUE(bytes_equal(plain_frame("\x80\xFF\x00\x0D"_bytes), "\x80\xFF\x00\x0D\x0D"_bytes));
}

TEST(wire, control_characters_have_their_codes) {
  EXPECT_EQ(wire::nul, 0x00);
  EXPECT_EQ(wire::soh, 0x01);
  EXPECT_EQ(wire::stx, 0x02);
  EXPECT_EQ(wire::etx, 0x03);
  EXPECT_EQ(wire::eot, 0x04);
  EXPECT_EQ(wire::ack, 0x06);
  EXPECT_EQ(wire::cr, 0x0D);
}

}  // namespace
