#include "program_end_unix.h"
#include "simulator/words.h"
#include "support/bytes.h"
#include "support/pty_server.h"

#include <QTest>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace std::chrono_literals;
using readersim::Family;
using readersim::Options;
using readersim::PtyServer;

constexpr auto a_while = 100ms;
const std::string vell_reply = "VELL READER V3.20 S/N 001001\r";

std::string scratch(const char* name) {
  return (std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + name)).string();
}

bool has_answered(PtyServer& server) {
  const std::vector<readersim::Event> events = server.events();
  return std::any_of(events.begin(), events.end(),
                     [](const auto& event) { return event.kind == readersim::Event::Kind::sent; });
}

/// Whether what the line noted last, and said nothing after, is this; waits for it.
bool notes_at_last(PtyServer& server, std::string_view note) {
  return QTest::qWaitFor([&] {
    const std::vector<readersim::Event> events = server.events();
    return !events.empty() && events.back().meaning == note;
  });
}

/// Whether the line has heard these bytes and no more; waits for them.
bool hears(PtyServer& server, std::string_view bytes) {
  return QTest::qWaitFor([&] { return server.received() == bytes; });
}

TEST(PtyServer, answers_a_program_that_opens_its_path) {
  PtyServer server{Family::vell};
  const ProgramEnd program{server.path()};
  ASSERT_TRUE(program.is_open());
  EXPECT_TRUE(bytes_equal(program.exchange("V\r", vell_reply.size()), vell_reply));
}

TEST(PtyServer, is_raw_so_that_every_byte_passes_both_ways_unchanged) {
  PtyServer server{Family::vell};
  std::string all;
  for (int code = 0; code < 256; ++code) {
    all += code == '\r' ? '\n' : static_cast<char>(code);  // one command, ended by one CR
  }
  server.with_line([&](readersim::Line& line, readersim::TimePoint) {
    line.find(0)->reader.identification = all;
    return 0;
  });
  const ProgramEnd program{server.path()};
  EXPECT_TRUE(bytes_equal(program.exchange("V\r", 257), all + "\r"));
  program.write("x" + all + "\r");
  EXPECT_TRUE(bytes_equal(program.exchange("V\r", 257), all + "\r"));
  EXPECT_TRUE(bytes_equal(server.received(), "V\rx" + all + "\rV\r"));
}

TEST(PtyServer, survives_the_program_closing_and_opening_again) {
  PtyServer server{Family::vell};
  const std::string path = server.path();
  for (int round = 0; round < 5; ++round) {
    const ProgramEnd program{path};
    ASSERT_TRUE(program.is_open());
    EXPECT_TRUE(bytes_equal(program.exchange("V\r", vell_reply.size()), vell_reply)) << round;
  }
  EXPECT_EQ(server.path(), path);
}

TEST(PtyServer, what_is_sent_while_no_program_has_the_line_open_is_lost) {
  PtyServer server{Family::vell};
  server.console("swipe 0 4711");
  std::this_thread::sleep_for(a_while);
  const ProgramEnd program{server.path()};
  EXPECT_TRUE(notes_at_last(server, "a program has the line open"));
  EXPECT_TRUE(bytes_equal(program.read(1, a_while), ""));
  EXPECT_EQ(server.console("swipe 0 4711"), "sent\n");
  EXPECT_TRUE(bytes_equal(program.read(5, 2s), "4711\r"));
}

TEST(PtyServer, what_the_program_left_unread_is_gone_when_it_closes) {
  PtyServer server{Family::vell};
  ProgramEnd first{server.path()};
  first.write("V\r");
  EXPECT_TRUE(QTest::qWaitFor([&server] { return has_answered(server); }));
  first.close();
  EXPECT_TRUE(notes_at_last(server, "no program has the line open"));
  const ProgramEnd second{server.path()};
  EXPECT_TRUE(bytes_equal(second.read(1, a_while), ""));
}

TEST(PtyServer, a_program_at_another_speed_is_not_understood) {
  PtyServer server{Family::vell};
  const ProgramEnd program{server.path()};
  program.set_speed(B1200);
  program.write("V\r");
  EXPECT_TRUE(hears(server, "V\r"));
  EXPECT_TRUE(bytes_equal(program.read(1, a_while), ""));
  program.set_speed(B9600);
  program.write("\0IB3\r"_bytes);
  EXPECT_TRUE(QTest::qWaitFor([&server] { return server.value(0, "line") == "1200 8N"; }));
  program.write("V\r");
  EXPECT_TRUE(hears(server, "V\r\0IB3\rV\r"_bytes));
  EXPECT_TRUE(bytes_equal(program.read(1, a_while), ""));
  program.set_speed(B1200);
  EXPECT_TRUE(bytes_equal(program.exchange("V\r", vell_reply.size()), vell_reply));
}

TEST(PtyServer, hangs_up_on_the_program_and_comes_back_under_the_same_link) {
  Options options;
  options.family = Family::vell;
  options.link = scratch("link");
  PtyServer server{options};
  EXPECT_EQ(std::filesystem::read_symlink(options.link), server.path());
  const ProgramEnd program{options.link};
  server.hang_up();
  EXPECT_TRUE(program.hung_up(2s));
  EXPECT_EQ(server.path(), "");
  EXPECT_FALSE(std::filesystem::is_symlink(options.link));
  server.replug();
  EXPECT_EQ(std::filesystem::read_symlink(options.link), server.path());
  const ProgramEnd again{options.link};
  ASSERT_TRUE(again.is_open());
  EXPECT_TRUE(bytes_equal(again.exchange("V\r", vell_reply.size()), vell_reply));
}

TEST(PtyServer, the_hang_up_fault_lets_what_went_before_arrive) {
  PtyServer server{Family::vell};
  server.console("fault 0 hang-up 5");
  const ProgramEnd program{server.path()};
  program.write("V\r");
  EXPECT_TRUE(bytes_equal(program.read(4, 2s), "VELL"));
  EXPECT_TRUE(program.hung_up(2s));
}

TEST(PtyServer, takes_its_link_away_when_it_ends) {
  Options options;
  options.link = scratch("link");
  { const PtyServer server{options}; }
  EXPECT_FALSE(std::filesystem::is_symlink(options.link));
}

TEST(PtyServer, replaces_a_stale_link_but_no_other_file) {
  Options options;
  options.link = scratch("link");
  std::filesystem::create_symlink("/nowhere", options.link);
  { const PtyServer server{options}; }
  const int file = ::open(options.link.c_str(), O_CREAT | O_WRONLY, 0600);
  ASSERT_GE(file, 0);
  ::close(file);
  EXPECT_THROW(PtyServer{options}, std::system_error);
  EXPECT_TRUE(std::filesystem::is_regular_file(options.link));
  std::filesystem::remove(options.link);
}

TEST(PtyServer, what_a_test_does_to_the_line_takes_effect_at_once) {
  PtyServer server{Family::vell};
  const ProgramEnd program{server.path()};
  EXPECT_TRUE(notes_at_last(server, "a program has the line open"));
  server.with_line([](readersim::Line& line, readersim::TimePoint now) {
    return line.swipe(*line.find(0), "4711", now).accepted;
  });
  EXPECT_TRUE(bytes_equal(program.read(5, 2s), "4711\r"));
  server.with_line([](readersim::Line& line, readersim::TimePoint now) {
    line.hang_up(now);
    return 0;
  });
  EXPECT_TRUE(program.hung_up(2s));
}

TEST(PtyServer, gives_a_copy_of_a_reader_and_single_values) {
  PtyServer server{Family::orin};
  EXPECT_EQ(server.reader(0).family, Family::orin);
  EXPECT_EQ(server.value(0, "record length"), "10");
  EXPECT_THROW((void)server.reader(1), readersim::Mistake);
  EXPECT_THROW((void)server.value(0, "age 1"), readersim::Mistake);
}

TEST(PtyServer, serves_a_program_that_reads_slowly_without_loss) {
  PtyServer server{Family::vell};
  server.with_line([&](readersim::Line& line, readersim::TimePoint) {
    line.find(0)->reader.identification = std::string(10000, 'x');
    return 0;
  });
  const ProgramEnd program{server.path()};
  program.write("V\r");
  EXPECT_TRUE(QTest::qWaitFor([&server] { return has_answered(server); }));
  std::string reply;
  while (reply.size() < 10001) {
    const std::string some = program.read(777, 1s);
    ASSERT_FALSE(some.empty());
    reply += some;
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_EQ(reply, std::string(10000, 'x') + "\r");
}

}  // namespace
