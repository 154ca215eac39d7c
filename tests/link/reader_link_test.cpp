// The port of the link and the reader it speaks to. The exchange itself: exchange_test.cpp.
#include "link/reader_link.h"

#include "support/link_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

struct reader_link : testing::Test, LinkBench {};

/// The link before its first opening.
struct start_up : testing::Test {
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
};

// --- Start-up -------------------------------------------------------------------------------------

TEST_F(start_up, everything_is_reset) {
  EXPECT_FALSE(link.comopen());
  EXPECT_FALSE(link.network_mode());
  EXPECT_EQ(link.address_byte(), 0);
  EXPECT_FALSE(link.command_accepted());
  EXPECT_EQ(link.last_response(), "");
}

TEST_F(start_up, opens_port_1_with_the_default_settings) {
  link.open_at_start_up();
  EXPECT_TRUE(link.comopen());
  EXPECT_EQ(port.opened_with, (Texts{"1:9600,N,8,1"}));
}

TEST_F(start_up, restorecomm_does_nothing_before_the_first_opening) {
  link.restorecomm();
  EXPECT_TRUE(port.opened_with.empty());
  EXPECT_FALSE(link.comopen());
}

TEST_F(start_up, a_failed_first_opening_shows_nothing) {
  port.openable = false;
  link.open_at_start_up();
  EXPECT_FALSE(link.comopen());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(start_up, after_a_failed_first_opening_no_choice_ever_opens_a_port_and_that_is_meant) {
  port.openable = false;
  link.open_at_start_up();
  port.openable = true;
  settings.port_number = 2;
  link.restorecomm();
  EXPECT_EQ(port.opened_with, (Texts{"1:9600,N,8,1"}));
  EXPECT_FALSE(link.comopen());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(start_up, opencomm_alone_does_not_end_it) {
  EXPECT_TRUE(link.opencomm());
  link.restorecomm();
  EXPECT_EQ(port.opened_with.size(), 1U);
}

// --- The port -------------------------------------------------------------------------------------

TEST_F(reader_link, opencomm_uses_the_choices_as_they_stand) {
  settings = {3, 2400, Parity::even, 7, false, "0"};
  EXPECT_TRUE(link.opencomm());
  EXPECT_EQ(port.opened_with.back(), "3:2400,E,7,1");
}

TEST_F(reader_link, a_failed_opencomm_clears_the_flag_and_shows_nothing) {
  port.openable = false;
  EXPECT_FALSE(link.opencomm());
  EXPECT_FALSE(link.comopen());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(reader_link, closecomm_closes_the_port) {
  link.closecomm();
  EXPECT_FALSE(link.comopen());
  EXPECT_FALSE(port.is_open);
}

TEST_F(reader_link, closecomm_on_a_closed_port_does_nothing) {
  link.closecomm();
  link.closecomm();
  EXPECT_FALSE(link.comopen());
}

TEST_F(reader_link, restorecomm_reopens_with_the_new_choice) {
  settings.parity = Parity::even;
  link.restorecomm();
  settings.data_bits = 7;
  link.restorecomm();
  EXPECT_EQ(port.opened_with, (Texts{"1:9600,N,8,1", "1:9600,E,8,1", "1:9600,E,7,1"}));
  EXPECT_TRUE(link.comopen());
}

TEST_F(reader_link, restorecomm_opens_a_port_that_was_closed) {
  link.closecomm();
  link.restorecomm();
  EXPECT_TRUE(link.comopen());
}

TEST_F(reader_link, restorecomm_that_fails_says_so_and_leaves_the_port_closed) {
  port.openable = false;
  dialogs.expect_message("Unable to open comm port");
  link.restorecomm();
  EXPECT_FALSE(link.comopen());
  EXPECT_FALSE(port.is_open);
}

TEST_F(reader_link, checkcom_is_silent_about_an_open_port) {
  EXPECT_TRUE(link.checkcom());
}

TEST_F(reader_link, checkcom_tells_of_a_closed_port) {
  link.closecomm();
  dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(link.checkcom());
}

TEST_F(reader_link, clearcomm_reads_out_what_waits) {
  port.arrive("left over");
  pump.idle(1ms);
  const int discards = port.discards;
  link.clearcomm();
  EXPECT_EQ(port.waiting(), "");
  EXPECT_EQ(port.discards, discards) << "reading out is not discarding";
}

TEST_F(reader_link, clearcomm_on_an_empty_buffer_returns_at_once) {
  link.clearcomm();
  EXPECT_EQ(pump.elapsed(), 0ms);
  EXPECT_EQ(pump.yields, 0);
}

TEST_F(reader_link, discard_throws_the_receive_buffer_away) {
  port.arrive("left over");
  pump.idle(1ms);
  link.discard_received();
  EXPECT_EQ(link.bytes_waiting(), 0U);
  EXPECT_EQ(port.discards, 1);
}

TEST_F(reader_link, a_hang_up_clears_the_flag_without_a_box) {
  port.hang_up();
  EXPECT_FALSE(link.comopen());
  EXPECT_TRUE(dialogs.shown.empty());
  dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(link.checkcom());
}

TEST_F(reader_link, a_port_that_hung_up_can_be_reopened) {
  port.hang_up();
  link.restorecomm();
  EXPECT_TRUE(link.comopen());
  EXPECT_TRUE(port.is_open);
}

TEST_F(reader_link, raw_bytes_go_out_as_they_are) {
  EXPECT_TRUE(link.write("\x80\xFF\x00"_bytes));
  link.write_ack();
  EXPECT_TRUE(bytes_equal(port.written(), "\x80\xFF\x00\x06"_bytes));
}

// --- The reader it speaks to ----------------------------------------------------------------------

TEST_F(reader_link, setnetaddr_takes_mode_and_address_from_the_choices) {
  use_network("5");
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_TRUE(link.network_mode());
  EXPECT_EQ(link.address_byte(), 0x85);
}

TEST_F(reader_link, addresses_0_to_127_are_taken) {
  for (int address = 0; address <= 127; ++address) {
    settings.reader_address = std::to_string(address);
    EXPECT_TRUE(link.setnetaddr());
    EXPECT_EQ(link.address_byte(), address + 128);
  }
}

TEST_F(reader_link, blanks_around_the_address_do_not_matter) {
  settings.reader_address = "  12 ";
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_EQ(link.address_byte(), 140);
}

TEST_F(reader_link, an_address_is_the_leading_digits_of_its_text) {
  settings.reader_address = "12ab";
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_EQ(link.address_byte(), 140);
}

TEST_F(reader_link, a_blank_address_is_reported_in_both_modes) {
  for (const bool network : {false, true}) {
    for (const char* address : {"", "   "}) {
      settings.network_mode = network;
      settings.reader_address = address;
      dialogs.expect_message("A Network address has not been set");
      EXPECT_FALSE(link.setnetaddr());
    }
  }
}

TEST_F(reader_link, addresses_from_128_on_are_refused) {
  for (const char* address : {"128", "200", "99999", "99999999999999999999"}) {
    settings.reader_address = address;
    dialogs.expect_message("A Network address has not been set");
    EXPECT_FALSE(link.setnetaddr()) << address;
  }
}

TEST_F(reader_link, a_pasted_text_that_is_no_address_is_refused) {
  for (const char* address : {"abc", "-1", "-", "."}) {
    settings.reader_address = address;
    dialogs.expect_message("A Network address has not been set");
    EXPECT_FALSE(link.setnetaddr()) << address;
  }
}

TEST_F(reader_link, a_refused_address_leaves_the_previous_byte_but_takes_the_mode) {
  use_network("5");
  EXPECT_TRUE(link.setnetaddr());
  settings.network_mode = false;
  settings.reader_address = "";
  dialogs.expect_message("A Network address has not been set");
  EXPECT_FALSE(link.setnetaddr());
  EXPECT_EQ(link.address_byte(), 0x85);
  EXPECT_FALSE(link.network_mode());
}

TEST_F(reader_link, the_network_option_takes_effect_at_once) {
  link.set_network_mode(true);
  EXPECT_TRUE(link.network_mode());
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_FALSE(link.network_mode()) << "every exchange reads the option anew";
}

TEST_F(reader_link, all_readers_are_addressed_by_127_in_network_mode_only) {
  use_network("127");
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_TRUE(link.to_all_readers());
  settings.network_mode = false;
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_FALSE(link.to_all_readers());
  use_network("126");
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_FALSE(link.to_all_readers());
}

// --- Frames ---------------------------------------------------------------------------------------

TEST_F(reader_link, a_frame_goes_out_in_one_write) {
  use_network("5");
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_TRUE(link.write_frame("V"));
  ASSERT_EQ(port.writes.size(), 1U);
  EXPECT_TRUE(bytes_equal(port.writes[0], "\x85\x02V\x03"_bytes));
}

TEST_F(reader_link, a_plain_frame_ends_in_cr) {
  EXPECT_TRUE(link.setnetaddr());
  EXPECT_TRUE(bytes_equal(link.frame("V"), "V\r"_bytes));
}

// --- The fixed boxes ------------------------------------------------------------------------------

TEST_F(reader_link, commerror_is_one_box_of_two_lines) {
  dialogs.expect_message("Error communicating with reader\rMake sure reader is connected and powered");
  link.commerror();
}

TEST_F(reader_link, notconnected_box) {
  dialogs.expect_message("Reader is not Connected");
  link.notconnected();
}

TEST_F(reader_link, protectedbox_text) {
  dialogs.expect_message("Invalid Function - Reader is Password Protected");
  link.protectedbox();
}

TEST_F(reader_link, reader_protected_is_never_true) {
  EXPECT_FALSE(ReaderLink::reader_protected());
}

}  // namespace
