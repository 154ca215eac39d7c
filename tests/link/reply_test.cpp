// Replies: getinput in both modes, and the connection test made of it.
#include "link/reader_link.h"
#include "support/link_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

struct Request {
  int maximum_length = 100;
  milliseconds time_out = 100ms;
  bool send_ack = false;
  bool doubled_terminator = false;
};

struct getinput : testing::Test, LinkBench {
  std::string response = "from before";

  bool collect(const Request& request = {}) {
    return link.getinput(response, request.maximum_length, request.time_out, request.send_ack,
                         request.doubled_terminator);
  }
  /// Bytes one after the other, `gap` apart, the first one after `gap`.
  void arrive_spaced(std::string_view bytes, milliseconds gap) {
    milliseconds when = gap;
    for (const char byte : bytes) {
      port.arrive(std::string(1, byte), when);
      when += gap;
    }
  }
};

struct network_reply : getinput {
  network_reply() {
    use_network("5");
    EXPECT_TRUE(link.setnetaddr());
  }
};

using plain_reply = getinput;

// --- On a network ---------------------------------------------------------------------------------

TEST_F(network_reply, loses_lead_in_and_terminator) {
  port.arrive(
      "\x06\x02"
      "0102031230\x03");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "0102031230");
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(network_reply, is_acknowledged_once_when_asked) {
  port.arrive(
      "\x06\x02"
      "0102031230\x03");
  EXPECT_TRUE(collect({.send_ack = true}));
  EXPECT_EQ(response, "0102031230");
  EXPECT_TRUE(bytes_equal(port.written(), "\x06"));
}

TEST_F(network_reply, any_lead_in_character_is_stripped_unseen) {
  port.arrive("\x06?data\x03");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "data");
}

TEST_F(network_reply, without_leading_ack_fails_at_once) {
  port.arrive(
      "\x02"
      "data\x03");
  EXPECT_FALSE(collect({.send_ack = true}));
  EXPECT_EQ(response, "");
  EXPECT_EQ(pump.elapsed(), 0ms);
  EXPECT_EQ(port.waiting(), "data\x03") << "only the wrong character has been read";
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(network_reply, silence_fails_after_the_time_out) {
  EXPECT_FALSE(collect({.time_out = 250ms}));
  EXPECT_EQ(pump.elapsed(), 250ms);
  EXPECT_EQ(response, "");
}

TEST_F(network_reply, the_time_out_counts_for_each_character_anew) {
  arrive_spaced(
      "\x06\x02"
      "0102031230\x03",
      99ms);
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "0102031230");
  EXPECT_EQ(pump.elapsed(), 13 * 99ms);
}

TEST_F(network_reply, silence_between_two_characters_fails_and_keeps_what_came) {
  port.arrive(
      "\x06\x02"
      "0102");
  port.arrive("031230\x03", 101ms);
  EXPECT_FALSE(collect({.send_ack = true}));
  EXPECT_TRUE(bytes_equal(response,
                          "\x02"
                          "0102"));
  EXPECT_TRUE(port.writes.empty());
  EXPECT_EQ(pump.elapsed(), 100ms);
}

TEST_F(network_reply, a_character_on_the_very_deadline_still_counts) {
  port.arrive(
      "\x06\x02"
      "a");
  port.arrive("b\x03", 100ms);
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "ab");
}

TEST_F(network_reply, at_maximum_length_loses_first_and_last_data_character_and_that_is_meant) {
  port.arrive(
      "\x06"
      "abcdef\x03");
  EXPECT_TRUE(collect({.maximum_length = 5, .send_ack = true}));
  EXPECT_EQ(response, "bcd");
  EXPECT_EQ(port.waiting(), "f\x03") << "the rest of the reply stays on the line";
  EXPECT_TRUE(bytes_equal(port.written(), "\x06"));
}

TEST_F(network_reply, the_leading_ack_does_not_count_towards_the_length) {
  port.arrive(
      "\x06"
      "abcd\x03");
  EXPECT_TRUE(collect({.maximum_length = 5}));
  EXPECT_EQ(response, "bcd");
  EXPECT_EQ(port.waiting(), "");
}

TEST_F(network_reply, of_nothing_is_empty) {
  port.arrive("\x06\x03");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "");
}

TEST_F(network_reply, of_only_a_lead_in_is_empty) {
  port.arrive("\x06\x02\x03");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "");
}

TEST_F(network_reply, nul_and_high_characters_are_data) {
  port.arrive("\x06\x02\x00\xFF\r\x06\x03"_bytes);
  EXPECT_TRUE(collect());
  EXPECT_TRUE(bytes_equal(response, "\x00\xFF\r\x06"_bytes));
}

TEST_F(network_reply, a_single_terminator_takes_no_pause) {
  port.arrive(
      "\x06\x02"
      "a\x03");
  EXPECT_TRUE(collect());
  EXPECT_TRUE(pump.sleeps.empty());
}

TEST_F(network_reply, a_doubled_terminator_leaves_one_etx) {
  port.arrive(
      "\x06\x02"
      "a\x03\x03");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_TRUE(bytes_equal(response, "a\x03"));
  EXPECT_EQ(pump.sleeps, (std::vector{100ms}));
}

TEST_F(network_reply, the_second_terminator_may_take_100_ms) {
  port.arrive(
      "\x06\x02"
      "a\x03");
  port.arrive("\x03", 100ms);
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_TRUE(bytes_equal(response, "a\x03"));
}

TEST_F(network_reply, no_second_terminator_leaves_none) {
  port.arrive(
      "\x06\x02"
      "a\x03");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_EQ(response, "a");
  EXPECT_EQ(pump.elapsed(), 100ms);
}

TEST_F(network_reply, another_character_after_the_terminator_is_read_and_dropped) {
  port.arrive(
      "\x06\x02"
      "a\x03xy");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_EQ(response, "a");
  EXPECT_EQ(port.waiting(), "y");
}

TEST_F(network_reply, without_the_flag_a_second_terminator_stays_on_the_line) {
  port.arrive(
      "\x06\x02"
      "a\x03\x03");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "a");
  EXPECT_EQ(port.waiting(), "\x03");
}

TEST_F(network_reply, of_nothing_but_a_doubled_terminator_is_empty) {
  port.arrive("\x06\x03\x03");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_EQ(response, "");
}

// --- On a plain line ------------------------------------------------------------------------------

TEST_F(plain_reply, ends_at_cr_and_keeps_all_before_it) {
  port.arrive(
      "\x02"
      "data\r");
  EXPECT_TRUE(collect());
  EXPECT_TRUE(bytes_equal(response,
                          "\x02"
                          "data"));
}

TEST_F(plain_reply, is_never_acknowledged) {
  port.arrive("data\r");
  EXPECT_TRUE(collect({.send_ack = true}));
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(plain_reply, needs_no_leading_ack_and_keeps_one) {
  port.arrive(
      "\x06"
      "data\r");
  EXPECT_TRUE(collect());
  EXPECT_TRUE(bytes_equal(response,
                          "\x06"
                          "data"));
}

TEST_F(plain_reply, at_maximum_length_keeps_every_character) {
  port.arrive("abcdef\r");
  EXPECT_TRUE(collect({.maximum_length = 5}));
  EXPECT_EQ(response, "abcde");
  EXPECT_EQ(port.waiting(), "f\r");
}

TEST_F(plain_reply, of_exactly_the_maximum_length_leaves_its_terminator) {
  port.arrive("abcde\r");
  EXPECT_TRUE(collect({.maximum_length = 5}));
  EXPECT_EQ(response, "abcde");
  EXPECT_EQ(port.waiting(), "\r");
}

TEST_F(plain_reply, of_nothing_is_empty) {
  port.arrive("\r");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "");
}

TEST_F(plain_reply, silence_fails_after_the_time_out) {
  EXPECT_FALSE(collect({.time_out = 250ms}));
  EXPECT_EQ(pump.elapsed(), 250ms);
  EXPECT_EQ(response, "");
}

TEST_F(plain_reply, silence_between_two_characters_fails_and_keeps_what_came) {
  port.arrive("dat");
  port.arrive("a\r", 101ms);
  EXPECT_FALSE(collect());
  EXPECT_EQ(response, "dat");
}

TEST_F(plain_reply, the_time_out_counts_for_each_character_anew) {
  arrive_spaced("0102031230\r", 99ms);
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "0102031230");
  EXPECT_EQ(pump.elapsed(), 11 * 99ms);
}

TEST_F(plain_reply, a_doubled_terminator_leaves_one_cr) {
  port.arrive("a\r\r");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_TRUE(bytes_equal(response, "a\r"));
  EXPECT_EQ(pump.sleeps, (std::vector{100ms}));
}

TEST_F(plain_reply, no_second_terminator_leaves_none) {
  port.arrive("a\r");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_EQ(response, "a");
}

TEST_F(plain_reply, another_character_after_the_terminator_is_read_and_dropped) {
  port.arrive("a\rxy");
  EXPECT_TRUE(collect({.doubled_terminator = true}));
  EXPECT_EQ(response, "a");
  EXPECT_EQ(port.waiting(), "y");
}

TEST_F(plain_reply, without_the_flag_a_second_terminator_stays_on_the_line) {
  port.arrive("a\r\r");
  EXPECT_TRUE(collect());
  EXPECT_EQ(response, "a");
  EXPECT_EQ(port.waiting(), "\r");
}

// --- What may happen meanwhile --------------------------------------------------------------------

TEST_F(getinput, a_nested_wait_keeps_the_outer_deadline) {
  // A second button during the wait: its own exchange takes 100 ms of the outer 150 ms.
  bool inner = true;
  pump.after(20ms, [&] {
    std::string other;
    inner = link.getinput(other, 100, 100ms, false, false);
  });
  EXPECT_FALSE(collect({.time_out = 150ms}));
  EXPECT_FALSE(inner);
  EXPECT_EQ(pump.elapsed(), 150ms);
}

TEST_F(getinput, a_nested_wait_longer_than_the_outer_one_does_not_make_it_endless) {
  pump.after(20ms, [&] {
    std::string other;
    EXPECT_FALSE(link.getinput(other, 100, 500ms, false, false));
  });
  EXPECT_FALSE(collect({.time_out = 150ms}));
  EXPECT_EQ(pump.elapsed(), 520ms);
}

TEST_F(getinput, the_length_is_counted_even_if_another_exchange_has_refilled_the_response) {
  // Both exchanges collect into the link's last response, as the screens' exchanges do.
  pump.after(20ms, [&] { static_cast<void>(link.getinput(link.last_response(), 100, 10ms, false, false)); });
  port.arrive("abc");
  port.arrive("0123456789\r", 25ms);
  port.arrive("defgh", 60ms);
  EXPECT_TRUE(link.getinput(link.last_response(), 5, 100ms, false, false));
  EXPECT_EQ(link.last_response(), "0123456789de");
  EXPECT_EQ(port.waiting(), "fgh");
}

TEST_F(getinput, closing_in_a_wait_ends_it_without_a_box) {
  pump.after(30ms, [&] { pump.close_program(); });
  clicks.run([&] {
    static_cast<void>(collect({.time_out = 250ms}));
    FAIL() << "went on after the program was closed";
  });
  EXPECT_EQ(pump.elapsed(), 30ms);
}

TEST_F(getinput, closing_in_the_terminator_pause_ends_it_too) {
  port.arrive("a\r");
  pump.after(40ms, [&] { pump.close_program(); });
  clicks.run([&] {
    static_cast<void>(collect({.doubled_terminator = true}));
    FAIL() << "went on after the program was closed";
  });
  EXPECT_EQ(pump.elapsed(), 40ms);
}

TEST_F(getinput, closing_within_a_nested_wait_unwinds_both) {
  int ended = 0;
  pump.after(20ms, [&] {
    clicks.run([&] {
      std::string other;
      static_cast<void>(link.getinput(other, 100, 500ms, false, false));
      ++ended;
    });
  });
  pump.after(50ms, [&] { pump.close_program(); });
  clicks.run([&] {
    static_cast<void>(collect({.time_out = 150ms}));
    ++ended;
  });
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(pump.elapsed(), 50ms);
}

TEST_F(getinput, an_option_that_reopens_the_port_meanwhile_ends_as_silence) {
  port.arrive("dat");
  pump.after(50ms, [&] {
    settings.baud = 1200;
    link.restorecomm();
  });
  EXPECT_FALSE(collect());
  EXPECT_EQ(response, "dat");
  EXPECT_TRUE(link.comopen());
}

TEST_F(getinput, a_hang_up_meanwhile_ends_as_silence_without_a_box) {
  pump.after(50ms, [&] { port.hang_up(); });
  EXPECT_FALSE(collect());
  EXPECT_TRUE(dialogs.shown.empty());
}

// --- reader_connected -----------------------------------------------------------------------------

using reader_connected = getinput;

TEST_F(reader_connected, asks_for_the_identification_on_a_plain_line) {
  port.answer("V\r", "0123456789\r");
  EXPECT_TRUE(link.reader_connected());
  EXPECT_TRUE(bytes_equal(port.written(), "V\r"));
  EXPECT_EQ(link.last_response(), "0123456789");
}

TEST_F(reader_connected, asks_and_acknowledges_on_a_network) {
  use_network("5");
  port.answer("\x85\x02V\x03",
              "\x06\x02"
              "0123456789\x03");
  EXPECT_TRUE(link.reader_connected());
  EXPECT_TRUE(bytes_equal(port.written(), "\x85\x02V\x03\x06"));
}

TEST_F(reader_connected, is_false_for_a_reply_of_9_characters_in_both_modes) {
  port.answer("V\r", "012345678\r");
  EXPECT_FALSE(link.reader_connected());
  use_network("5");
  port.answer("\x85\x02V\x03",
              "\x06\x02"
              "012345678\x03");
  EXPECT_FALSE(link.reader_connected());
}

TEST_F(reader_connected, is_false_after_100_ms_of_silence) {
  EXPECT_FALSE(link.reader_connected());
  EXPECT_EQ(pump.elapsed(), 100ms);
  EXPECT_EQ(link.last_response(), "");
}

TEST_F(reader_connected, is_false_for_ten_characters_without_an_end) {
  port.answer("V\r", "0123456789");
  EXPECT_FALSE(link.reader_connected());
}

TEST_F(reader_connected, takes_a_reply_of_100_characters_without_an_end) {
  port.answer("V\r", std::string(120, 'x'));
  EXPECT_TRUE(link.reader_connected());
  EXPECT_EQ(link.last_response(), std::string(100, 'x'));
}

TEST_F(reader_connected, leaves_a_clean_line) {
  port.arrive("before");
  pump.idle(1ms);
  port.answer("V\r", "0123456789\rafter");
  EXPECT_TRUE(link.reader_connected());
  EXPECT_EQ(port.waiting(), "");
}

TEST_F(reader_connected, stops_at_a_blank_address) {
  settings.reader_address = "";
  dialogs.expect_message("A Network address has not been set");
  EXPECT_FALSE(link.reader_connected());
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(reader_connected, does_not_call_checkcom) {
  link.closecomm();
  EXPECT_FALSE(link.reader_connected());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(reader_connected, is_false_when_the_line_takes_no_bytes) {
  port.writable = false;
  EXPECT_FALSE(link.reader_connected());
}

TEST_F(reader_connected, closing_meanwhile_ends_it) {
  pump.after(30ms, [&] { pump.close_program(); });
  EXPECT_THROW(static_cast<void>(link.reader_connected()), ProgramClosing);
}

}  // namespace
