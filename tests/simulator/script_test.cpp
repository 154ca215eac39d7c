#include "simulator/script.h"

#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::Console;
using readersim::Script;

class ScriptTest : public Host, public testing::Test {
 protected:
  readersim::Reader& reader = line.add(readersim::Family::ferro_kesh, 0, false).reader;
  Console console{line, 1};
  [[nodiscard]] std::size_t cards() const { return reader.log.records.size(); }
};

TEST_F(ScriptTest, runs_its_lines_at_once_and_gives_what_they_say) {
  Script script{"# three\nswipe 0 1\r\nswipe 0 2\n\nbla\nswipe 0 3"};
  EXPECT_EQ(script.next_due(), 0s);
  EXPECT_EQ(script.run(console, 0s), "collected\ncollected\n? no command \"bla\", try help\ncollected\n");
  EXPECT_EQ(script.next_due(), std::nullopt);
}

TEST_F(ScriptTest, waits_as_long_as_it_says) {
  Script script{"swipe 0 1\nwait 2.5\nswipe 0 2\nwait 0.5\nswipe 0 3\n"};
  (void)script.run(console, 0s);
  EXPECT_EQ(cards(), 1U);
  EXPECT_EQ(script.next_due(), 2500ms);
  (void)script.run(console, 2499ms);
  EXPECT_EQ(cards(), 1U);
  (void)script.run(console, 2600ms);
  EXPECT_EQ(cards(), 2U);
  EXPECT_EQ(script.next_due(), 3s);  // counted from when the wait was due, not from when it was seen
  (void)script.run(console, 10s);
  EXPECT_EQ(cards(), 3U);
}

TEST_F(ScriptTest, repeats_from_the_top) {
  Script script{"swipe 0 1\nwait 1\nrepeat\nswipe 0 never"};
  for (int second = 0; second < 10; ++second) {
    (void)script.run(console, std::chrono::seconds{second});
    EXPECT_EQ(cards(), static_cast<std::size_t>(second) + 1);
  }
}

TEST_F(ScriptTest, that_repeats_without_waiting_ends_with_a_mistake) {
  Script script{"swipe 0 1\nrepeat\n"};
  EXPECT_EQ(script.run(console, 0s), "collected\n? a script that repeats has to wait, it ends here\n");
  EXPECT_EQ(script.next_due(), std::nullopt);
}

TEST_F(ScriptTest, a_wait_that_is_none_is_told_and_passed_over) {
  Script script{"wait soon\nwait -1\nwait 1e99\nswipe 0 1"};
  EXPECT_EQ(
      script.run(console, 0s),
      "? \"soon\" is no number of seconds\n? \"-1\" is no number of seconds\n? \"1e99\" is no number of "
      "seconds\ncollected\n");
}

TEST_F(ScriptTest, an_empty_script_is_never_due) {
  EXPECT_EQ(Script{}.next_due(), std::nullopt);
  EXPECT_EQ(Script{""}.next_due(), std::nullopt);
}

TEST(Bench, is_one_orin_on_a_plain_line_by_default) {
  readersim::Bench bench{{}};
  ASSERT_EQ(bench.line().seats().size(), 1U);
  const readersim::Reader& reader = bench.line().seats()[0]->reader;
  EXPECT_EQ(reader.family, readersim::Family::orin);
  EXPECT_EQ(reader.address, 0);
  EXPECT_FALSE(reader.protocol_mode);
}

TEST(Bench, mixes_the_families_on_a_network) {
  readersim::Options options = readersim::parse_options({"--network", "0-126", "--baud", "1200"});
  readersim::Bench bench{options};
  ASSERT_EQ(bench.line().seats().size(), readersim::Line::most_readers);
  for (int address = 0; address < 127; ++address) {
    const readersim::Reader& reader = bench.line().find(address)->reader;
    EXPECT_EQ(reader.family, readersim::all_families.at(static_cast<std::size_t>(address) % 6));
    EXPECT_TRUE(reader.protocol_mode);
    EXPECT_EQ(reader.format.baud, 1200);
  }
}

TEST(Bench, starts_the_clocks_as_told_and_runs_its_script) {
  const readersim::Options options =
      readersim::parse_options({"--family", "quor", "--clock", "0104151305097"});
  readersim::Bench bench{options, "wait 1\nswipe 0 4711\n", {}};
  EXPECT_EQ(bench.next_due(), 0s);
  EXPECT_EQ(bench.run_script(0s), "");
  EXPECT_EQ(bench.next_due(), 1s);
  EXPECT_EQ(bench.run_script(1s), "collected\n");
  EXPECT_EQ(bench.line().find(0)->reader.log.records.at(0), "0104151305104711");
  EXPECT_EQ(bench.next_due(), std::nullopt);
  bench.line().receive("V\r", 2s);
  EXPECT_EQ(bench.next_due(), 2020ms);
}

TEST(Bench, for_a_demonstration_has_something_in_every_reader) {
  readersim::Bench bench{
      readersim::parse_options({"--network", "0-5", "--demo", "--clock", "0104161305091"})};
  EXPECT_EQ(bench.line().find(0)->reader.polls.waiting.size(), 1U);  // the Vell
  for (const int access : {1, 2}) {
    EXPECT_EQ(bench.line().find(access)->reader.access.entries().size(), 5U);
    EXPECT_EQ(bench.line().find(access)->reader.log.records.size(), 3U);
    EXPECT_EQ(bench.line().find(access)->reader.schedules.at(1).days[0], "08001700");
  }
  for (const int collecting : {3, 4, 5}) {
    EXPECT_EQ(bench.line().find(collecting)->reader.log.records.size(), 4U);
  }
}

}  // namespace
