#include "program_end_unix.h"
#include "simulator/server.h"
#include "support/bytes.h"
#include "support/pty_server.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <thread>

namespace {

using namespace std::chrono_literals;
using readersim::Family;
using readersim::Options;
using readersim::PtyServer;
using readersim::Server;

TEST(LocalClock, is_thirteen_digits_with_the_day_of_the_week_last) {
  // 15 April 2001, a Sunday, 13:05:09, as the tests' time zone has it.
  const auto time = std::chrono::system_clock::from_time_t(987339909);
  EXPECT_EQ(readersim::local_clock(time), "0104151305097");
}

class ServerTest : public testing::Test {
 protected:
  static Options vell() {
    Options options;
    options.family = Family::vell;
    return options;
  }
  /// Serves until the condition holds, at most five seconds.
  template <typename Done>
  void serve(Server& server, Done done) {
    const auto end = std::chrono::steady_clock::now() + 5s;
    while (!done() && std::chrono::steady_clock::now() < end) {
      (void)server.round({}, 10ms);
    }
  }
  std::vector<std::string> printed;
  std::function<void(const std::string&)> print = [this](const std::string& line) {
    printed.push_back(line);
  };
};

TEST_F(ServerTest, prints_each_frame_with_the_time_of_day) {
  Server server{vell(), "", print};
  const ProgramEnd program{server.path()};
  program.write("V\r");
  serve(server, [&] { return printed.size() >= 3; });
  ASSERT_GE(printed.size(), 3U);
  EXPECT_TRUE(
      std::regex_match(printed[0], std::regex{R"(\d\d:\d\d:\d\d\.\d{3}  a program has the line open)"}));
  EXPECT_TRUE(std::regex_match(
      printed[1], std::regex{R"(\d\d:\d\d:\d\d\.\d{3}  pc > 000  56 0D  V<CR>  identification)"}));
  EXPECT_TRUE(std::regex_match(
      printed[2],
      std::regex{R"(\d\d:\d\d:\d\d\.\d{3}  000 > pc  56 45 .* 0D  VELL .*<CR>  identification)"}));
}

TEST_F(ServerTest, prints_no_traffic_when_it_is_to_be_quiet_and_still_keeps_it) {
  Options options = vell();
  options.quiet = true;
  Server server{options, "", print};
  const ProgramEnd program{server.path()};
  program.write("V\r");
  serve(server, [&] { return server.events().size() >= 3; });
  EXPECT_TRUE(printed.empty());
  EXPECT_GE(server.events().size(), 3U);
}

TEST_F(ServerTest, starts_the_clocks_at_the_time_of_this_computer) {
  Options options;
  options.family = Family::orin;
  Server server{options, "", print};
  const std::string before = readersim::local_clock(std::chrono::system_clock::now() - 2s).substr(0, 12);
  const std::string after = readersim::local_clock(std::chrono::system_clock::now() + 2s).substr(0, 12);
  const std::string clock = server.with_line(
      [](readersim::Line& line, readersim::TimePoint now) { return line.find(0)->reader.clock.stamp(now); });
  EXPECT_GE(clock, before);
  EXPECT_LE(clock, after);
}

TEST_F(ServerTest, prints_what_a_script_says_and_ends_at_its_quit) {
  Server server{vell(), "swipe 0 4711\nwait 0.02\nbla\nquit\n", print};
  serve(server, [&] { return server.quit(); });
  EXPECT_TRUE(server.quit());
  EXPECT_NE(std::find(printed.begin(), printed.end(), "? no command \"bla\", try help"), printed.end());
}

TEST_F(ServerTest, tells_which_other_descriptor_is_ready) {
  Server server{vell(), "", print};
  int ends[2]{};
  ASSERT_EQ(::pipe(ends), 0);
  EXPECT_TRUE(server.round({ends[0]}, 5ms).empty());
  (void)!::write(ends[1], "x", 1);
  EXPECT_EQ(server.round({ends[0]}, 5s), std::vector<int>{ends[0]});
  char byte = 0;
  EXPECT_EQ(::read(ends[0], &byte, 1), 1);
  ::close(ends[1]);
  EXPECT_EQ(server.round({ends[0]}, 5s), std::vector<int>{ends[0]});  // its end
  ::close(ends[0]);
}

TEST_F(ServerTest, tells_when_programs_come_and_go) {
  Server server{vell(), "", print};
  {
    const ProgramEnd program{server.path()};
    serve(server, [&] { return printed.size() == 1; });
  }
  serve(server, [&] { return printed.size() == 2; });
  ASSERT_EQ(printed.size(), 2U);
  EXPECT_TRUE(printed[0].ends_with("a program has the line open"));
  EXPECT_TRUE(printed[1].ends_with("no program has the line open"));
}

TEST(PtyServerThread, is_asked_from_several_threads_while_a_program_talks) {
  Options options;
  options.network = {0, 1, 2, 3};
  options.family = Family::ferro_kesh;
  options.line.answer_delay = 0ms;
  PtyServer server{options};
  std::vector<std::thread> hands;
  for (int reader = 0; reader < 4; ++reader) {
    hands.emplace_back([&server, reader] {
      for (int card = 0; card < 50; ++card) {
        server.console("swipe " + std::to_string(reader) + " " + std::to_string(card));
        (void)server.value(reader, "log records");
        (void)server.reader(reader);
      }
    });
  }
  const ProgramEnd program{server.path()};
  for (int i = 0; i < 50; ++i) {
    EXPECT_TRUE(bytes_equal(program.exchange("\x81\x02}00\x03", 1), "\x06"));
  }
  for (std::thread& hand : hands) {
    hand.join();
  }
  for (int reader = 0; reader < 4; ++reader) {
    EXPECT_EQ(server.value(reader, "log records"), "50");
  }
}

TEST(PtyServerThread, deals_with_what_is_asked_while_it_still_deals_with_the_last) {
  PtyServer server{Family::vell};
  for (int round = 0; round < 200; ++round) {
    const ProgramEnd program{server.path()};
    ASSERT_EQ(program.exchange("V\r", 29).size(), 29U) << round;
    server.with_line([](readersim::Line& line, readersim::TimePoint now) {
      return line.swipe(*line.find(0), "4711", now).accepted;
    });
    // Its answer is here before the one who gave it is through.
    ASSERT_EQ(program.read(5, 2s), "4711\r") << round;
    server.with_line([](readersim::Line& line, readersim::TimePoint now) {
      line.hang_up(now);
      return 0;
    });
    ASSERT_TRUE(program.hung_up(2s)) << round;
    server.replug();
  }
}

TEST(PtyServerThread, paces_bytes_in_real_time) {
  Options options;
  options.family = Family::vell;
  options.line.paced = true;
  options.baud = 1200;
  PtyServer server{options};
  const ProgramEnd program{server.path()};
  program.set_speed(B1200);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(program.exchange("V\r", 29).size(), 29U);
  // 31 bytes of ten bits at 1200 baud, and 20 ms between.
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, 31 * 8333us + 20ms);
  EXPECT_LE(took, 1s);
}

TEST(PtyServerThread, ends_at_once_whatever_is_still_to_be_said) {
  const auto start = std::chrono::steady_clock::now();
  {
    PtyServer server{Family::vell};
    server.console("fault 0 late 60000");
    const ProgramEnd program{server.path()};
    program.write("V\r");
    std::this_thread::sleep_for(20ms);
  }
  EXPECT_LE(std::chrono::steady_clock::now() - start, 2s);
}

TEST(PtyServerThread, does_not_spin_while_nothing_happens) {
  const PtyServer server{Family::vell};
  std::this_thread::sleep_for(50ms);
  const std::clock_t before = std::clock();
  std::this_thread::sleep_for(300ms);
  EXPECT_LE(std::clock() - before, CLOCKS_PER_SEC / 20);
}

}  // namespace
