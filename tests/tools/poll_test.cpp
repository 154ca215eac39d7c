#include "tools/poll.h"

#include "support/link_bench.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::pair<std::string, PollColour>>;

constexpr PollColour black = PollColour::black;
constexpr PollColour red = PollColour::red;
constexpr PollColour green = PollColour::green;

/// Keeps what stands on the display, and how often it was cleared.
struct KeptDisplay : PollDisplay {
  Lines lines;
  int clears = 0;

  void clear() override {
    lines.clear();
    ++clears;
  }
  void print(std::string_view line, PollColour colour) override { lines.emplace_back(line, colour); }
};

struct PollBench : LinkBench {
  BusyFlags busy;
  KeptDisplay display;
  Poller poller{link, pump, dialogs, busy, display};

  /// Polls for that long, then presses the stop button.
  void run(const PollBoxes& boxes, std::chrono::milliseconds time) {
    pump.after(
        time, [this] { poller.stop(); }, true);
    poller.start(boxes);
    EXPECT_FALSE(busy.polling_on);
  }
  void run_one_poll(const PollBoxes& boxes) { run(boxes, 0ms); }

  /// Whole polls: the writes that begin a poll of `address`, counted.
  int polls_of(int address) const {
    const std::string frame = std::string{static_cast<char>(address + 128)} + "\x02?\x03";
    return static_cast<int>(std::count(port.writes.begin(), port.writes.end(), frame));
  }
};

const std::string poll_of_5 = "\x85\x02?\x03";

/// One reader at 5, with the usual times.
PollBoxes reader_5() {
  return {"5", "5", "100", "100"};
}

}  // namespace

TEST(poll, a_closed_port_is_told_and_leaves_the_display_as_it_was) {
  PollBench bench;
  bench.link.closecomm();
  bench.display.print("Unit 001 old line", black);
  bench.dialogs.expect_message("Comm port is not open");
  bench.poller.start(reader_5());
  EXPECT_EQ(bench.display.lines.size(), 1U);
  EXPECT_EQ(bench.display.clears, 0);
  EXPECT_FALSE(bench.busy.polling_on);
}

TEST(poll, a_first_address_above_the_last_is_refused_and_nothing_is_sent) {
  PollBench bench;
  bench.dialogs.expect_message("Invalid Addresses selected for poll");
  bench.poller.start({"5", "3", "100", "100"});
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_FALSE(bench.busy.polling_on);
}

TEST(poll, the_global_address_cannot_be_polled) {
  PollBench bench;
  bench.dialogs.expect_message("Address must be < 127");
  bench.poller.start({"0", "127", "100", "100"});
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_FALSE(bench.busy.polling_on);
}

TEST(poll, a_range_that_is_wrong_in_both_ways_is_told_as_invalid) {
  PollBench bench;
  bench.dialogs.expect_message("Invalid Addresses selected for poll");
  bench.poller.start({"200", "127", "100", "100"});
}

TEST(poll, the_display_is_cleared_before_the_boxes_are_checked) {
  PollBench bench;
  bench.display.print("Unit 001 old line", black);
  bench.dialogs.expect_message("Address must be < 127");
  bench.poller.start({"0", "127", "100", "100"});
  EXPECT_TRUE(bench.display.lines.empty());
}

TEST(poll, an_emptied_box_is_a_type_mismatch_after_the_display_was_cleared) {
  for (const PollBoxes& boxes : {PollBoxes{"", "5", "100", "100"}, PollBoxes{"5", "", "100", "100"},
                                 PollBoxes{"5", "5", "", "100"}, PollBoxes{"5", "5", "100", ""}}) {
    PollBench bench;
    bench.dialogs.expect_message("Type mismatch");
    bench.clicks.run([&] { bench.poller.start(boxes); });
    EXPECT_EQ(bench.display.clears, 1);
    EXPECT_TRUE(bench.port.writes.empty());
    EXPECT_FALSE(bench.busy.polling_on);
  }
}

TEST(poll, a_number_beyond_16_bits_overflows) {
  PollBench bench;
  bench.dialogs.expect_message("Overflow");
  bench.clicks.run([&] { bench.poller.start({"5", "5", "32768", "100"}); });
  EXPECT_FALSE(bench.busy.polling_on);
}

TEST(poll, polling_on_is_set_while_it_polls_and_not_before) {
  PollBench bench;
  bool seen = false;
  bench.pump.after(150ms, [&] { seen = bench.busy.polling_on; });
  EXPECT_FALSE(bench.busy.polling_on);
  bench.run(reader_5(), 400ms);
  EXPECT_TRUE(seen);
}

TEST(poll, polls_one_reader_again_and_again_until_stopped) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.run(reader_5(), 1050ms);
  // Six polls of delay and time-out each: the one in progress is finished.
  ASSERT_EQ(bench.port.writes.size(), 6U);
  for (const std::string& write : bench.port.writes) {
    EXPECT_TRUE(bytes_equal(write, poll_of_5));
  }
  EXPECT_EQ(bench.pump.elapsed(), 1200ms);
}

TEST(poll, walks_the_range_and_starts_again_at_its_first_address) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.run({"0", "2", "100", "100"}, 850ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\x80\x02?\x03\x81\x02?\x03\x82\x02?\x03\x80\x02?\x03\x81\x02?\x03"_bytes));
}

TEST(poll, needs_no_reader_address_and_leaves_that_of_the_other_screens_alone) {
  PollBench bench;
  bench.use_network("9");
  ASSERT_TRUE(bench.link.setnetaddr());
  bench.settings.reader_address = "";
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.polls_of(5), 1);
  bench.poller.reset_all_readers();
  EXPECT_TRUE(bench.dialogs.shown.empty());
  EXPECT_EQ(bench.link.address_byte(), 9 + 128);
}

TEST(poll, polls_up_to_address_126) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.run({"126", "126", "10", "10"}, 0ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\xFE\x02?\x03"_bytes));
}

TEST(poll, a_silent_reader_is_shown_and_not_acknowledged_when_all_polls_are_shown) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", black}}));
  EXPECT_TRUE(bytes_equal(bench.port.written(), poll_of_5));
}

TEST(poll, a_silent_reader_is_not_shown_but_acknowledged_twice_when_not_all_polls_are_shown) {
  PollBench bench;
  bench.run_one_poll(reader_5());
  EXPECT_TRUE(bench.display.lines.empty());
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5, "\x06", "\x06"}));
}

TEST(poll, a_record_is_a_red_line_and_acknowledged_once) {
  PollBench bench;
  bench.port.answer(poll_of_5,
                    "\x06\x85\x01"
                    "A\x03");
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005\x85^AA^C", red}}));
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5, "\x06"}));
}

TEST(poll, an_end_is_a_green_line) {
  PollBench bench;
  bench.port.answer(poll_of_5, "\x06\x85\x04\x03");
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005\x85^D^C", green}}));
}

TEST(poll, any_other_reply_is_a_black_line) {
  PollBench bench;
  bench.port.answer(poll_of_5, "\x06\x85\x02ok\x03");
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005\x85^Bok^C", black}}));
}

TEST(poll, control_characters_show_64_above_and_all_others_as_they_are) {
  PollBench bench;
  bench.port.answer(poll_of_5, "\x06 \x1F\x20\x7F\x80\xFF\x0D\x00"_bytes);
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines.at(0).first, "Unit 005 ^_ \x7F\x80\xFF^M^@");
}

TEST(poll, three_characters_after_the_acknowledge_are_a_reply) {
  PollBench bench;
  bench.port.answer(poll_of_5, "\x06xyz");
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005xyz", black}}));
}

TEST(poll, fewer_than_three_characters_after_the_acknowledge_are_unknown) {
  for (const std::string reply : {"\x06", "\x06x", "\x06xy"}) {
    PollBench bench;
    bench.poller.set_show_all(true);
    bench.port.answer(poll_of_5, reply);
    bench.run_one_poll(reader_5());
    EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005Unknown Response", black}}));
    EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5, "\x06", "\x06"}));
    // The pause for the rest of the reply, and once more for what is unknown.
    EXPECT_EQ(bench.pump.sleeps, (std::vector<TestPump::Milliseconds>{100ms, 30ms, 30ms}));
  }
}

TEST(poll, a_first_character_other_than_the_acknowledge_is_unknown) {
  for (const bool show_all : {true, false}) {
    PollBench bench;
    bench.poller.set_show_all(show_all);
    bench.port.answer(poll_of_5, "garbage");
    bench.run_one_poll(reader_5());
    EXPECT_EQ(bench.display.lines, show_all ? (Lines{{"Unit 005Unknown Response", black}}) : Lines{});
    EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5, "\x06", "\x06"}));
    EXPECT_EQ(bench.pump.sleeps, (std::vector<TestPump::Milliseconds>{100ms, 30ms}));
    EXPECT_EQ(bench.port.waiting(), "");
  }
}

TEST(poll, what_comes_within_30_ms_of_the_acknowledge_belongs_to_the_reply) {
  PollBench bench;
  bench.port.answer(poll_of_5, "\x06", 50ms);
  bench.port.responder = [&](std::string_view written) {
    if (written == poll_of_5) {
      bench.port.arrive("abcd", 79ms);
      bench.port.arrive("late", 81ms);
    }
  };
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005abcd", black}}));
}

TEST(poll, a_late_reader_is_a_time_out_and_its_reply_is_dropped_before_the_next_poll) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.port.answer(poll_of_5,
                    "\x06\x85\x01"
                    "A\x03",
                    150ms);
  bench.port.answer(poll_of_5, "\x06new");
  bench.run(reader_5(), 210ms);
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", black}, {"Unit 005new", black}}));
}

TEST(poll, the_colour_of_the_last_reply_stays_for_time_outs_and_unknown_responses) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.port.answer(poll_of_5,
                    "\x06\x85\x01"
                    "A\x03");
  bench.port.answer(poll_of_5, "?");
  bench.run(reader_5(), 400ms);
  EXPECT_EQ(
      bench.display.lines,
      (Lines{{"Unit 005\x85^AA^C", red}, {"Unit 005Unknown Response", red}, {"Unit 005 TIMEOUT", red}}));
}

TEST(poll, the_colour_stays_over_a_new_start) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.port.answer(poll_of_5, "\x06\x85\x04\x03");
  bench.run_one_poll(reader_5());
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", green}}));
}

TEST(poll, thirty_lines_stand_and_the_display_is_cleared_before_the_31st) {
  PollBench bench;
  bench.poller.set_show_all(true);
  std::size_t most = 0;
  bench.pump.after(30 * 200ms + 50ms, [&] { most = bench.display.lines.size(); });
  bench.run(reader_5(), 30 * 200ms + 150ms);
  EXPECT_EQ(most, 30U);
  EXPECT_EQ(bench.display.lines.size(), 1U);
  EXPECT_EQ(bench.display.clears, 2);
}

TEST(poll, checkline_leaves_a_display_with_room_and_clears_a_full_one) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.run(reader_5(), 29 * 200ms - 50ms);
  ASSERT_EQ(bench.display.lines.size(), 29U);
  bench.poller.checkline();
  EXPECT_EQ(bench.display.lines.size(), 29U);
  bench.run(reader_5(), 30 * 200ms - 50ms);
  ASSERT_EQ(bench.display.lines.size(), 30U);
  bench.poller.checkline();
  EXPECT_TRUE(bench.display.lines.empty());
}

TEST(poll, show_all_counts_from_the_next_line_on) {
  PollBench bench;
  bench.pump.after(150ms, [&] { bench.poller.set_show_all(true); });
  bench.pump.after(350ms, [&] { bench.poller.set_show_all(false); });
  bench.run(reader_5(), 350ms);
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", black}}));
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5, poll_of_5, "\x06", "\x06"}));
}

TEST(poll, a_time_out_of_0_expires_at_once_even_when_a_reply_comes_with_it) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.port.answer(poll_of_5, "\x06xyz", 0ms);
  bench.run({"5", "5", "0", "0"}, 0ms);
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", black}}));
  EXPECT_LE(bench.pump.elapsed(), 1ms);
}

TEST(poll, an_endless_poll_without_delay_and_time_out_can_be_stopped) {
  PollBench bench;
  bench.run({"0", "126", "0", "0"}, 500ms);
  EXPECT_LE(bench.pump.elapsed(), 501ms);
  EXPECT_GT(bench.polls_of(0), 1);
}

TEST(poll, a_cycle_costs_the_delay_the_reply_and_the_pause_and_no_more) {
  PollBench bench;
  bench.port.responder = [&](std::string_view written) {
    if (written == poll_of_5) {
      bench.port.arrive("\x06xyz", 20ms);
    }
  };
  bench.run({"5", "5", "50", "100"}, 100 * 100ms - 60ms);
  EXPECT_EQ(bench.polls_of(5), 100);
  EXPECT_EQ(bench.pump.elapsed(), 100 * (50ms + 20ms + 30ms));
}

TEST(poll, a_pasted_negative_range_is_invalid_and_negative_times_are_none) {
  PollBench bench;
  bench.dialogs.expect_message("Invalid Addresses selected for poll");
  bench.poller.start({"-3", "5", "100", "100"});
  bench.poller.set_show_all(true);
  bench.run({"5", "5", "-50", "-50"}, 0ms);
  EXPECT_EQ(bench.display.lines.size(), 1U);
  EXPECT_LE(bench.pump.elapsed(), 1ms);
}

TEST(poll, a_stop_is_forgotten_at_the_next_start) {
  PollBench bench;
  bench.poller.stop();
  bench.run_one_poll(reader_5());
  EXPECT_EQ(bench.polls_of(5), 1);
}

TEST(poll, a_second_start_takes_the_new_range_at_once_and_one_stop_ends_it_all) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.pump.after(150ms, [&] {
    bench.poller.start({"7", "8", "10", "20"});
    EXPECT_TRUE(bench.busy.polling_on);
  });
  bench.run({"5", "5", "100", "30000"}, 200ms);
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 007 TIMEOUT", black}, {"Unit 008 TIMEOUT", black}}));
  EXPECT_LE(bench.pump.elapsed(), 150ms + EventPump::longest_yield + 2 * 30ms);
}

TEST(poll, a_second_start_that_is_refused_leaves_the_first_one_polling) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.dialogs.expect_message("Invalid Addresses selected for poll");
  bench.pump.after(150ms, [&] { bench.poller.start({"7", "6", "100", "100"}); });
  bench.run(reader_5(), 350ms);
  EXPECT_EQ(bench.polls_of(5), 2);
  EXPECT_EQ(bench.display.lines.size(), 2U);
}

TEST(poll, a_thousand_starts_while_polling_are_still_one_poll) {
  PollBench bench;
  bench.poller.set_show_all(true);
  for (int count = 1; count <= 1000; ++count) {
    bench.pump.after(count * 1ms, [&] { bench.poller.start({"5", "5", "0", "500"}); });
  }
  bench.run(reader_5(), 1100ms);
  EXPECT_EQ(bench.display.lines, (Lines{{"Unit 005 TIMEOUT", black}}));
}

TEST(poll, a_port_that_hangs_up_ends_the_polling_without_a_box) {
  PollBench bench;
  bench.poller.set_show_all(true);
  bench.pump.after(150ms, [&] { bench.port.hang_up(); });
  bench.poller.start(reader_5());
  EXPECT_FALSE(bench.busy.polling_on);
  EXPECT_TRUE(bench.display.lines.empty()) << "nobody was late";
  EXPECT_LE(bench.pump.elapsed(), 160ms);
}

TEST(poll, closing_the_program_ends_every_wait_at_once) {
  // In the delay, in the wait for a reply, in the pause after its first character.
  for (const auto moment : {50ms, 110ms, 130ms}) {
    PollBench bench;
    bench.port.answer(poll_of_5, "\x06xyz", 20ms);
    bench.pump.after(moment, [&] { bench.pump.close_program(); });
    bench.clicks.run([&] { bench.poller.start(reader_5()); });
    EXPECT_EQ(bench.pump.elapsed(), moment);
    EXPECT_TRUE(bench.display.lines.empty());
  }
}

TEST(poll, hours_of_polling_leave_no_more_than_a_display_full_of_lines) {
  PollBench bench;
  bench.poller.set_show_all(true);
  std::size_t most = 0;
  bench.port.responder = [&](std::string_view /*written*/) {
    most = std::max(most, bench.display.lines.size());
    bench.port.writes.clear();
  };
  bench.run({"0", "126", "100", "100"}, 2h);
  EXPECT_EQ(most, 30U);
}

TEST(poll, the_second_acknowledge_is_not_tried_after_the_first_has_failed) {
  for (const auto* const reply : {"", "?", "\x06"}) {  // silence, no acknowledge, too short
    PollBench bench;
    bench.port.answer(poll_of_5, reply);
    bench.port.responder = [&bench](std::string_view /*written*/) { bench.port.writable = false; };
    bench.run_one_poll(reader_5());
    EXPECT_EQ(bench.port.writes, (std::vector<std::string>{poll_of_5})) << reply;
    EXPECT_EQ(bench.port.refused, 1) << reply;
  }
}

TEST(poll, a_reset_in_the_network_form_is_not_tried_after_the_plain_one_has_failed) {
  PollBench bench;
  bench.port.writable = false;
  bench.poller.reset_all_readers();
  EXPECT_EQ(bench.port.refused, 1);
}

TEST(poll, resetting_all_readers_sends_the_plain_and_the_network_form) {
  PollBench bench;
  bench.poller.reset_all_readers();
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{"\x00U\x0D"_bytes, "\xFF\x02\x00U\x03"_bytes}));
  EXPECT_EQ(bench.pump.yields, 0);
}

TEST(poll, resetting_all_readers_on_a_closed_port_is_told) {
  PollBench bench;
  bench.link.closecomm();
  bench.dialogs.expect_message("Comm port is not open");
  bench.poller.reset_all_readers();
  EXPECT_TRUE(bench.port.writes.empty());
}
