// Commands and their acknowledge. Replies: reply_test.cpp.
#include "link/frame.h"
#include "link/reader_link.h"
#include "support/link_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr const char* no_acknowledge = "Reader does not acknowledge command";
constexpr const char* address_not_set = "A Network address has not been set";

struct send_command : testing::Test, LinkBench {
  const std::string command = introduced("ITP");
  const std::string to_reader_5 = "\x85\x02\x00ITP\x03"_bytes;
};

struct getack : testing::Test, LinkBench {};

// --- send_command ---------------------------------------------------------------------------------

TEST_F(send_command, network_frame_of_reader_5) {
  use_network("5");
  port.answer(to_reader_5, "\x06");
  EXPECT_TRUE(link.send_command(command, true));
  EXPECT_TRUE(link.command_accepted());
  ASSERT_EQ(port.writes.size(), 1U) << "the whole frame goes out in one write";
  EXPECT_TRUE(bytes_equal(port.written(), to_reader_5));
}

TEST_F(send_command, global_address_goes_out_as_0xff) {
  use_network("127");
  EXPECT_TRUE(link.send_command("V", false));
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02V\x03"_bytes));
}

TEST_F(send_command, plain_command_is_accepted_without_reading_anything) {
  port.answer("V\r", "some answer", 0ms);
  EXPECT_TRUE(link.send_command("V", true));
  EXPECT_TRUE(link.command_accepted());
  EXPECT_TRUE(bytes_equal(port.written(), "V\r"_bytes));
  EXPECT_TRUE(pump.sleeps.empty());
  EXPECT_EQ(pump.elapsed(), 0ms);
}

TEST_F(send_command, network_command_without_wait_is_accepted_at_once) {
  use_network("5");
  EXPECT_TRUE(link.send_command(command, false));
  EXPECT_TRUE(link.command_accepted());
  EXPECT_EQ(pump.elapsed(), 0ms);
}

TEST_F(send_command, pauses_200_ms_before_it_looks_for_the_acknowledge) {
  use_network("5");
  port.answer(to_reader_5, "\x06", 199ms);
  EXPECT_TRUE(link.send_command(command, true));
  EXPECT_EQ(pump.sleeps, (std::vector{200ms}));
  EXPECT_EQ(pump.elapsed(), 200ms);
}

TEST_F(send_command, an_acknowledge_after_the_pause_is_too_late) {
  use_network("5");
  port.answer(to_reader_5, "\x06", 201ms);
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
  EXPECT_FALSE(link.command_accepted());
}

TEST_F(send_command, silence_is_no_acknowledge) {
  use_network("5");
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
}

TEST_F(send_command, any_other_first_character_is_no_acknowledge) {
  use_network("5");
  port.answer(to_reader_5, "\x15\x06");
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
}

TEST_F(send_command, a_nul_is_no_acknowledge) {
  use_network("5");
  port.answer(to_reader_5, "\0"_bytes);
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
}

TEST_F(send_command, a_failure_is_not_tried_again) {
  use_network("5");
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
  EXPECT_EQ(port.writes.size(), 1U);
}

TEST_F(send_command, a_broadcast_waits_for_an_acknowledge_that_never_comes) {
  use_network("127");
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02\x00ITP\x03"_bytes)) << "the frame has gone out";
}

TEST_F(send_command, an_old_acknowledge_on_the_line_does_not_count) {
  use_network("5");
  port.arrive("\x06");
  pump.idle(1ms);
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
}

TEST_F(send_command, throws_away_everything_received_after_the_command) {
  use_network("5");
  port.answer(to_reader_5,
              "\x06\x02"
              "data\x03");
  EXPECT_TRUE(link.send_command(command, true));
  EXPECT_EQ(port.waiting(), "");
  EXPECT_EQ(port.discards, 2) << "once before the command, once after it";
}

TEST_F(send_command, the_line_is_cleared_after_the_box_of_a_failure_too) {
  use_network("5");
  port.answer(to_reader_5, "garbage");
  dialogs.expect_message(no_acknowledge, [&] { EXPECT_EQ(port.waiting(), "arbage"); });
  EXPECT_FALSE(link.send_command(command, true));
  EXPECT_EQ(port.waiting(), "");
}

TEST_F(send_command, a_blank_address_sends_nothing_with_network_off_either) {
  settings.reader_address = "";
  dialogs.expect_message(address_not_set);
  EXPECT_FALSE(link.send_command("V", true));
  EXPECT_FALSE(link.command_accepted());
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(send_command, the_address_is_looked_at_before_the_port) {
  link.closecomm();
  settings.reader_address = "128";
  dialogs.expect_message(address_not_set);
  EXPECT_FALSE(link.send_command("V", true));
}

TEST_F(send_command, a_closed_port_is_reported_and_nothing_is_sent) {
  link.closecomm();
  dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(link.send_command("V", true));
  EXPECT_FALSE(link.command_accepted());
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(send_command, a_stopped_command_takes_an_earlier_acceptance_back) {
  EXPECT_TRUE(link.send_command("V", true));
  link.closecomm();
  dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(link.send_command("V", true));
  EXPECT_FALSE(link.command_accepted());
}

TEST_F(send_command, a_line_that_takes_no_bytes_ends_with_the_same_words_in_both_modes) {
  port.writable = false;
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command("V", true));
  EXPECT_FALSE(link.command_accepted());
  use_network("5");
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command("V", true));
  EXPECT_TRUE(pump.sleeps.empty()) << "nothing went out, so nothing is waited for";
}

TEST_F(send_command, a_hang_up_in_the_pause_ends_with_its_own_words) {
  use_network("5");
  pump.after(50ms, [&] { port.hang_up(); });
  dialogs.expect_message(no_acknowledge);
  EXPECT_FALSE(link.send_command(command, true));
  EXPECT_FALSE(link.comopen());
}

TEST_F(send_command, closing_in_the_pause_ends_it_without_a_box) {
  use_network("5");
  pump.after(50ms, [&] { pump.close_program(); });
  clicks.run([&] {
    static_cast<void>(link.send_command(command, true));
    FAIL() << "went on after the program was closed";
  });
  EXPECT_EQ(pump.elapsed(), 50ms);
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_FALSE(link.command_accepted());
}

// --- getack ---------------------------------------------------------------------------------------

TEST_F(getack, gives_up_after_exactly_100_polls) {
  EXPECT_FALSE(link.getack());
  EXPECT_EQ(pump.yields, 100);
  EXPECT_EQ(pump.elapsed(), 1000ms);
  EXPECT_TRUE(pump.sleeps.empty()) << "there is no sleep between the polls";
}

TEST_F(getack, finds_the_acknowledge_on_the_poll_in_which_it_comes) {
  for (const int poll : {1, 2, 50, 99, 100}) {
    const auto begun = pump.elapsed();
    pump.yields = 0;
    port.arrive("\x06", 10ms * (poll - 1) + 5ms);
    EXPECT_TRUE(link.getack());
    EXPECT_EQ(pump.yields, poll);
    EXPECT_EQ(pump.elapsed() - begun, 10ms * (poll - 1) + 5ms);
  }
}

TEST_F(getack, an_acknowledge_after_the_last_poll_is_not_seen) {
  port.arrive("\x06", 1001ms);
  EXPECT_FALSE(link.getack());
}

TEST_F(getack, drops_other_characters_one_a_poll) {
  port.arrive("xyz\x06");
  EXPECT_TRUE(link.getack());
  EXPECT_EQ(pump.yields, 4);
}

TEST_F(getack, a_hundred_other_characters_use_up_the_polls) {
  port.arrive(std::string(100, 'x') + "\x06");
  EXPECT_FALSE(link.getack());
  EXPECT_EQ(pump.yields, 100);
  EXPECT_TRUE(bytes_equal(port.waiting(), "\x06")) << "the acknowledge behind them stays on the line";
}

TEST_F(getack, leaves_what_follows_the_acknowledge) {
  port.arrive(
      "\x06"
      "ab");
  EXPECT_TRUE(link.getack());
  EXPECT_EQ(port.waiting(), "ab");
}

TEST_F(getack, the_mouse_does_not_use_up_polls) {
  for (int move = 0; move < 1000; ++move) {
    pump.after(std::chrono::milliseconds(move), [] {});
  }
  port.arrive("\x06", 900ms);
  EXPECT_TRUE(link.getack());
}

TEST_F(getack, shows_nothing_on_a_closed_port) {
  link.closecomm();
  EXPECT_FALSE(link.getack());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(getack, closing_ends_it_without_a_box) {
  pump.after(333ms, [&] { pump.close_program(); });
  clicks.run([&] {
    static_cast<void>(link.getack());
    FAIL() << "went on after the program was closed";
  });
  EXPECT_EQ(pump.elapsed(), 333ms);
  EXPECT_TRUE(dialogs.shown.empty());
}

}  // namespace
