#include "tools/terminal_receiver.h"

#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/test_pump.h"

namespace {

using namespace std::chrono_literals;

struct terminal_receiver : testing::Test {
  TestPump pump;
  FakePort port{pump};
  TerminalReceiver receiver{port, pump};
  ReceivedLines shown = ReceivedLines(1);
  int appends = 0;

  terminal_receiver() { EXPECT_TRUE(port.open(CommSettings{})); }

  void start() {
    receiver.start([this](const ReceivedLines& lines) {
      ++appends;
      shown.back() += lines.front();
      shown.insert(shown.end(), lines.begin() + 1, lines.end());
    });
  }
};

ReceivedLines rendered(std::string_view bytes) {
  ReceivedLines lines(1);
  for (const char byte : bytes) {
    append_received(lines, byte);
  }
  return lines;
}

}  // namespace

TEST(append_received, text_and_cr_give_the_text_and_a_new_line) {
  EXPECT_EQ(rendered("OK\r"), (ReceivedLines{"OK", ""}));
}

TEST(append_received, control_characters_show_48_codes_higher_and_then_themselves) {
  EXPECT_EQ(rendered("\x02"
                     "A\x03"),
            (ReceivedLines{"^2\x02"
                           "A^3\x03"}));
  EXPECT_EQ(rendered("\x01\x06\x1B"), ReceivedLines{"^1\x01^6\x06^K\x1B"});
}

TEST(append_received, nul_shows_as_two_codes_and_itself) {
  EXPECT_EQ(rendered("\0"_bytes), ReceivedLines{"^@^0\0"_bytes});
}

TEST(append_received, a_line_feed_breaks_no_line) {
  EXPECT_EQ(rendered("a\nb"), ReceivedLines{"a^:\nb"});
}

TEST(append_received, characters_from_0x7f_on_stay_as_they_are) {
  EXPECT_EQ(rendered("\x7F\x80\xFF"), ReceivedLines{"\x7F\x80\xFF"});
}

TEST_F(terminal_receiver, shows_in_one_piece_what_came_within_its_millisecond) {
  start();
  port.arrive("O");
  port.arrive("K\r", 1ms);
  pump.idle(5ms);
  EXPECT_EQ(shown, (ReceivedLines{"OK", ""}));
  EXPECT_EQ(appends, 1);
}

TEST_F(terminal_receiver, ticks_only_while_something_comes) {
  start();
  pump.idle(1000ms);
  port.arrive("x");
  pump.idle(1000ms);
  EXPECT_EQ(appends, 1);
}

TEST_F(terminal_receiver, shows_what_waited_before_it_started) {
  port.arrive("early");
  pump.idle(1ms);
  start();
  pump.idle(2ms);
  EXPECT_EQ(shown, ReceivedLines{"early"});
}

TEST_F(terminal_receiver, leaves_the_port_alone_when_stopped) {
  start();
  receiver.stop();
  port.arrive("abc");
  pump.idle(10ms);
  EXPECT_EQ(appends, 0);
  EXPECT_EQ(port.waiting(), "abc");
}

TEST_F(terminal_receiver, a_flood_is_shown_whole_in_bounded_pieces) {
  start();
  const std::string flood(10000, 'x');
  port.arrive(flood);
  pump.idle(20ms);
  EXPECT_EQ(shown, ReceivedLines{flood});
  EXPECT_EQ(appends, 3);
}

TEST_F(terminal_receiver, shows_nothing_while_the_full_screen_terminal_has_the_port_and_goes_on_afterwards) {
  start();
  port.arrive("before");
  pump.idle(5ms);
  receiver.set_screenactive(true);
  int listened = 0;
  receiver.set_full_screen_listener([&listened] { ++listened; });
  port.arrive("during");
  pump.idle(5ms);
  EXPECT_EQ(shown, ReceivedLines{"before"});
  EXPECT_EQ(listened, 1);
  EXPECT_EQ(port.waiting(), "during");
  receiver.set_screenactive(false);
  port.arrive(" after");
  pump.idle(5ms);
  EXPECT_EQ(shown, ReceivedLines{"beforeduring after"});
}

TEST_F(terminal_receiver, a_closed_port_shows_nothing_and_costs_nothing) {
  start();
  port.close();
  pump.idle(100ms);
  EXPECT_EQ(appends, 0);
}
