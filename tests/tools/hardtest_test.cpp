#include "tools/hardtest.h"

#include "shell/safe_file.h"
#include "support/link_bench.h"
#include "tools/terminal_receiver.h"

#include <QTemporaryDir>

#include <vector>

namespace {

using namespace std::chrono_literals;

/// Keeps what the test shows; the replies come through the terminal's receiver, as on the screen.
struct KeptTest : HardtestDisplay {
  std::string steps;
  ReceivedLines output{""};
  std::vector<std::string> outputs;  ///< whenever the output was about to be emptied
  int profile_shown = 0;
  int repaints = 0;

  void show_profile() override { ++profile_shown; }
  void clear_steps() override { steps.clear(); }
  void add_step(std::string_view caption) override { steps.append(caption).append("\r\n"); }
  void clear_output() override {
    outputs.push_back(output.back());
    output.assign(1, {});
  }
  void repaint_output() override { ++repaints; }
};

struct HardtestBench : LinkBench {
  QTemporaryDir folder;
  CurrentProfile profile{folder.filePath(QStringLiteral("own.txt")).toStdString(), {}};
  KeptTest display;
  TerminalReceiver receiver{port, pump};
  HardwareTest test{link, pump, profile, display};

  HardtestBench() {
    receiver.start([this](const ReceivedLines& lines) {
      display.output.back() += lines.front();
      display.output.insert(display.output.end(), lines.begin() + 1, lines.end());
    });
  }

  struct Step {
    std::string caption;
    std::string command;
    std::string wait;
  };
  void write_profile(const std::vector<Step>& steps) {
    TestProfile written;
    for (std::size_t step = 0; step < steps.size(); ++step) {
      written.captions.at(step) = steps[step].caption;
      written.commands.at(step) = steps[step].command;
      written.waits.at(step) = steps[step].wait;
    }
    save_profile(profile.testprofilefile, written);
  }
  void run_once() { test.start(0ms); }
  void stop_at(std::chrono::milliseconds time) {
    pump.after(
        time, [this] { test.stop(); }, true);
  }
};

}  // namespace

TEST(hardtest, a_step_is_its_command_character_by_character_and_cr) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V1", "500"}});
  bench.run_once();
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{"V", "1", "\x0D"}));
  EXPECT_EQ(bench.pump.sleeps, (std::vector<TestPump::Milliseconds>{500ms}));
  EXPECT_EQ(bench.pump.yields, 10);
}

TEST(hardtest, on_a_network_address_and_stx_go_as_one_write_and_etx_ends_the_step) {
  HardtestBench bench;
  bench.use_network("3");
  bench.write_profile({{"Identification", "V", "500"}});
  bench.run_once();
  EXPECT_EQ(bench.port.writes, (std::vector<std::string>{"\x83\x02", "V", "\x03"}));
}

TEST(hardtest, character_130_goes_out_as_nul_and_every_other_one_as_it_is) {
  HardtestBench bench;
  std::string command;
  std::string expected;
  for (int code = 1; code < 256; ++code) {
    command += static_cast<char>(code);
    expected += code == 130 ? '\0' : static_cast<char>(code);
  }
  bench.write_profile({{"All", command, "0"}});
  bench.run_once();
  EXPECT_TRUE(bytes_equal(bench.port.written(), expected + "\x0D"));
}

TEST(hardtest, a_profile_with_a_blank_first_caption_sends_nothing_and_ends) {
  HardtestBench bench;
  bench.write_profile({{"   ", "V", "500"}, {"second", "W", "500"}});
  bench.run_once();
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_EQ(bench.display.steps, "");
  EXPECT_EQ(bench.pump.yields, 10);
}

TEST(hardtest, steps_behind_a_blank_caption_are_not_looked_at) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "0"}, {"two", "2", "0"}, {" ", "3", "0"}, {"four", "4", "0"}});
  bench.run_once();
  EXPECT_EQ(bench.port.written(),
            "1\x0D"
            "2\x0D");
  EXPECT_EQ(bench.display.steps, "one\r\ntwo\r\n");
}

TEST(hardtest, ten_steps_are_all_sent) {
  HardtestBench bench;
  bench.write_profile(std::vector<HardtestBench::Step>(10, {"step", "V", "10"}));
  bench.run_once();
  EXPECT_EQ(bench.port.writes.size(), 20U);
  EXPECT_EQ(bench.display.repaints, 10);
}

TEST(hardtest, the_reply_that_came_during_the_wait_is_shown_by_the_receiver_and_not_discarded) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V", "500"}});
  bench.port.answer("\x0D", "\x02VELL\x0D", 100ms);
  bench.run_once();
  EXPECT_EQ(bench.display.output, (ReceivedLines{"^2\x02VELL", ""}));
}

TEST(hardtest, a_reply_that_comes_after_the_wait_is_shown_while_the_ten_yields_last) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V", "50"}});
  bench.port.answer("\x0D", "late", 140ms);
  bench.run_once();
  EXPECT_EQ(bench.display.output, (ReceivedLines{"late"}));
  EXPECT_EQ(bench.pump.elapsed(), 150ms);
}

TEST(hardtest, what_waits_after_the_run_is_discarded) {
  HardtestBench bench;
  bench.receiver.stop();
  bench.write_profile({{"Identification", "V", "50"}});
  bench.port.answer("\x0D", "unread", 10ms);
  bench.run_once();
  EXPECT_EQ(bench.port.waiting(), "");
  EXPECT_EQ(bench.port.discards, 0);
}

TEST(hardtest, a_closed_port_is_told_and_nothing_is_sent_or_shown) {
  HardtestBench bench;
  bench.link.closecomm();
  bench.dialogs.expect_message("Comm port is not open");
  bench.run_once();
  EXPECT_EQ(bench.display.profile_shown, 0);
  EXPECT_FALSE(bench.test.running());
}

TEST(hardtest, a_missing_address_is_told_after_the_profile_was_shown_and_nothing_is_sent) {
  HardtestBench bench;
  bench.settings.reader_address = "";
  bench.write_profile({{"Identification", "V", "500"}});
  bench.dialogs.expect_message("A Network address has not been set");
  bench.run_once();
  EXPECT_EQ(bench.display.profile_shown, 1);
  EXPECT_TRUE(bench.port.writes.empty());
}

TEST(hardtest, a_missing_profile_is_named_and_nothing_is_sent) {
  HardtestBench bench;
  bench.dialogs.expect_message("File not found: " + bench.profile.testprofilefile.string());
  bench.clicks.run([&] { bench.run_once(); });
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_FALSE(bench.test.running());
}

TEST(hardtest, a_short_profile_is_named_and_leaves_the_tables_as_they_were) {
  HardtestBench bench;
  bench.profile.tables.captions.at(0) = "kept";
  replace_file(bench.profile.testprofilefile, "only\r\ntwo\r\n");
  bench.dialogs.expect_message("The test profile " + bench.profile.testprofilefile.string() +
                               " has only 2 of its 30 lines");
  bench.clicks.run([&] { bench.run_once(); });
  EXPECT_EQ(bench.profile.tables.captions.at(0), "kept");
}

TEST(hardtest, a_delay_of_0_runs_once_and_another_repeats_after_it) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V", "500"}});
  bench.stop_at(3 * 2600ms + 50ms);
  bench.test.start(2000ms);
  // Three runs of wait and yields, each with its delay, and the fourth, in which the stop was noticed.
  EXPECT_EQ(bench.port.written(), "V\x0DV\x0DV\x0DV\x0D");
  EXPECT_EQ(bench.pump.elapsed(), 3 * 2600ms + 600ms);
  EXPECT_EQ(bench.pump.sleeps,
            (std::vector<TestPump::Milliseconds>{500ms, 2000ms, 500ms, 2000ms, 500ms, 2000ms, 500ms}));
}

TEST(hardtest, output_and_step_list_are_emptied_at_the_start_of_every_run) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V", "100"}});
  bench.port.answer("V", "first", 10ms);
  bench.port.answer("V", "second", 10ms);
  bench.stop_at(350ms);
  bench.test.start(100ms);
  EXPECT_EQ(bench.display.outputs, (std::vector<std::string>{"", "first"}));
  EXPECT_EQ(bench.display.output, (ReceivedLines{"second"}));
  EXPECT_EQ(bench.display.steps, "Identification\r\n");
}

TEST(hardtest, the_profile_is_not_loaded_again_between_runs) {
  HardtestBench bench;
  bench.write_profile({{"Identification", "V", "100"}});
  bench.pump.after(50ms, [&] { bench.write_profile({{"Other", "W", "100"}}); });
  bench.stop_at(350ms);
  bench.test.start(100ms);
  EXPECT_EQ(bench.port.written(), "V\x0DV\x0D");
}

TEST(hardtest, a_stop_takes_effect_after_the_current_step) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "100"}, {"two", "2", "100"}});
  bench.stop_at(50ms);
  bench.test.start(100ms);
  EXPECT_EQ(bench.port.written(), "1\x0D");
  EXPECT_EQ(bench.display.repaints, 1);
  EXPECT_EQ(bench.pump.elapsed(), 200ms);
}

TEST(hardtest, a_stop_during_the_delay_is_noticed_after_the_first_step_of_the_next_run) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "100"}, {"two", "2", "100"}});
  bench.stop_at(500ms);
  bench.test.start(1000ms);
  EXPECT_EQ(bench.port.written(),
            "1\x0D"
            "2\x0D"
            "1\x0D");
}

TEST(hardtest, an_empty_continuous_profile_can_be_stopped) {
  HardtestBench bench;
  bench.write_profile({});
  bench.stop_at(1000ms);
  bench.test.start(1ms);
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_LE(bench.pump.elapsed(), 1200ms);
}

TEST(hardtest, a_stop_is_forgotten_at_the_next_start) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "0"}, {"two", "2", "0"}});
  bench.test.stop();
  bench.run_once();
  EXPECT_EQ(bench.port.writes.size(), 4U);
}

TEST(hardtest, a_wait_counts_by_its_leading_number) {
  EXPECT_EQ(step_wait("500"), 500ms);
  EXPECT_EQ(step_wait("  250 ms"), 250ms);
  EXPECT_EQ(step_wait("+20"), 20ms);
  EXPECT_EQ(step_wait("1e3"), 1ms);
  EXPECT_EQ(step_wait("0x10"), 0ms);
  EXPECT_EQ(step_wait(""), 0ms);
  EXPECT_EQ(step_wait("soon"), 0ms);
  EXPECT_EQ(step_wait("infinity"), 0ms);
  EXPECT_EQ(step_wait("nan"), 0ms);
  EXPECT_EQ(step_wait("-5"), 0ms);
}

TEST(hardtest, a_wait_is_rounded_to_whole_milliseconds) {
  EXPECT_EQ(step_wait("1.4"), 1ms);
  EXPECT_EQ(step_wait("1.6"), 2ms);
  EXPECT_EQ(step_wait(".7"), 1ms);
}

TEST(hardtest, a_wait_beyond_all_measure_is_held_at_the_longest) {
  EXPECT_EQ(step_wait("99999999999999999999"), 2147483647ms);
  EXPECT_EQ(step_wait(std::string(400, '9')), 2147483647ms);
  EXPECT_EQ(step_wait("-" + std::string(400, '9')), 0ms);
}

TEST(hardtest, a_second_start_runs_the_profile_anew_and_one_stop_ends_it_all) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "100"}, {"two", "2", "100"}});
  bench.pump.after(150ms, [&] {
    bench.test.start(0ms);
    EXPECT_TRUE(bench.test.running());
  });
  bench.test.start(5000ms);
  EXPECT_EQ(bench.port.written(),
            "1\x0D"
            "1\x0D"
            "2\x0D");
  EXPECT_FALSE(bench.test.running());
}

TEST(hardtest, a_second_start_that_fails_leaves_the_first_test_running) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "100"}, {"two", "2", "100"}});
  bench.dialogs.expect_message("A Network address has not been set");
  bench.pump.after(150ms, [&] {
    bench.settings.reader_address = "";
    bench.test.start(0ms);
  });
  bench.run_once();
  EXPECT_EQ(bench.port.written(),
            "1\x0D"
            "2\x0D");
}

TEST(hardtest, a_port_that_hangs_up_ends_a_continuous_test_without_a_box) {
  HardtestBench bench;
  bench.write_profile({{"one", "1", "100"}, {"two", "2", "100"}});
  bench.pump.after(50ms, [&] { bench.port.hang_up(); });
  bench.test.start(100ms);
  EXPECT_EQ(bench.pump.elapsed(), 200ms);
  EXPECT_FALSE(bench.test.running());
}

TEST(hardtest, a_line_that_takes_nothing_is_tried_once_a_step) {
  HardtestBench bench;
  bench.write_profile({{"one", std::string(100, 'x'), "10"}, {"two", "2", "10"}});
  bench.port.writable = false;
  bench.run_once();
  EXPECT_TRUE(bench.port.writes.empty());
  EXPECT_EQ(bench.port.refused, 2);
  EXPECT_EQ(bench.display.steps, "one\r\ntwo\r\n");
}

TEST(hardtest, closing_the_program_ends_every_wait_at_once) {
  // In a step's wait, in the yields after it, in the delay between two runs.
  for (const auto moment : {50ms, 150ms, 300ms}) {
    HardtestBench bench;
    bench.write_profile({{"one", "1", "100"}});
    bench.pump.after(moment, [&] { bench.pump.close_program(); });
    bench.clicks.run([&] { bench.test.start(1000ms); });
    EXPECT_EQ(bench.pump.elapsed(), moment);
    EXPECT_FALSE(bench.test.running());
  }
}
