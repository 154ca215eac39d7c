#include "config/clock_group.h"

#include "config/screen_checks.h"

#include <QLabel>

namespace {

using namespace std::chrono_literals;

/// The three screens with the clock, and how their reading differs.
struct ClockScreen {
  const char* name;
  ScreenCode code;
  bool port_first;
  bool asks_for_presence;
};

void PrintTo(const ClockScreen& screen, std::ostream* out) {
  *out << screen.name;
}

struct ClockBench : ScreenBench {
  explicit ClockBench(const ClockScreen& screen) : ScreenBench(screen.code) {
    pump.clock = {2001, 4, 15, 13, 5, 9, 7};
    pump.idle(1000ms);
  }

  std::string shown(const char* display) { return control<QLabel>(display).text().toStdString(); }

  void answer_presence(const ClockScreen& screen) {
    if (screen.asks_for_presence) {
      port.answer("V\r", "Orin 1.00 0001\r");
      port.answer("\x85\x02V\x03", "\x06:Orin 1.00 0001\x03");
    }
  }
};

class ClockOn : public testing::TestWithParam<ClockScreen> {};

TEST_P(ClockOn, pc_clock_is_live_from_the_start) {
  ScreenBench bench(GetParam().code);
  EXPECT_EQ(bench.control<QLabel>("current_date_time").text().size(), 20);
  EXPECT_EQ(bench.control<QLabel>("reader_date_time").text(), QString());
  bench.pump.clock = {1999, 12, 31, 23, 59, 58, 5};
  bench.pump.idle(1000ms);
  EXPECT_EQ(bench.control<QLabel>("current_date_time").text(), QStringLiteral("12/31/1999  23:59:58"));
}

TEST_P(ClockOn, set_sends_what_the_clock_shows_on_a_plain_line) {
  ClockBench bench(GetParam());
  bench.dialogs.expect_message("Date/Time set in reader");
  bench.press("set_date_time");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "+0104151305097\r"));
}

TEST_P(ClockOn, set_on_a_network_awaits_an_acknowledge) {
  ClockBench bench(GetParam());
  bench.use_network("5");
  bench.port.answer("\x85\x02+0104151305097\x03", "\x06");
  bench.dialogs.expect_message("Date/Time set in reader");
  bench.press("set_date_time");
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_date_time");
  bench.use_network("127");
  bench.dialogs.expect_message("Date/Time set in reader");
  bench.press("set_date_time");
  EXPECT_TRUE(bytes_equal(bench.port.writes.back(), "\xFF\x02+0104151305097\x03"));
}

TEST_P(ClockOn, reading_on_a_plain_line_shows_on_all_three_screens) {
  const ClockScreen& screen = GetParam();
  ClockBench bench(screen);
  bench.answer_presence(screen);
  bench.port.answer("t\r", "010415130509\r");
  bench.press("read_date_time");
  EXPECT_TRUE(bytes_equal(bench.port.written(), screen.asks_for_presence ? "V\rt\r" : "t\r"));
  for (const ScreenCode code : {ScreenCode::orinparam, ScreenCode::keshsetup, ScreenCode::quorsetup}) {
    bench.open(code);
    EXPECT_EQ(bench.shown("reader_date_time"), "04/15/2001  13:05:09");
  }
}

TEST_P(ClockOn, reading_on_a_network_ends_with_two_acknowledges) {
  const ClockScreen& screen = GetParam();
  ClockBench bench(screen);
  bench.use_network("5");
  bench.answer_presence(screen);
  bench.port.answer("\x85\x02t\x03", "\x06:991231235959\x03");
  bench.press("read_date_time");
  EXPECT_EQ(bench.shown("reader_date_time"), "12/31/1999  23:59:59");
  const std::string presence = screen.asks_for_presence ? "\x85\x02V\x03\x06" : "";
  EXPECT_TRUE(bytes_equal(bench.port.written(), presence + "\x85\x02t\x03\x06\x06"));
}

TEST_P(ClockOn, reading_tells_what_fails) {
  const ClockScreen& screen = GetParam();
  ClockBench bench(screen);
  bench.dialogs.expect_message(screen.asks_for_presence ? "Reader is not Connected"
                                                        : "error reading from reader");
  bench.press("read_date_time");
  bench.answer_presence(screen);
  bench.dialogs.expect_message("error reading from reader");
  bench.press("read_date_time");
  bench.use_network(" ");
  bench.dialogs.expect_message("A Network address has not been set");
  bench.press("read_date_time");
  bench.program.services().link.closecomm();
  for (const char* const button : {"set_date_time", "read_date_time"}) {
    bench.dialogs.expect_message("Comm port is not open");
    bench.press(button);
  }
  EXPECT_EQ(bench.shown("reader_date_time"), "");
}

TEST_P(ClockOn, reading_from_all_readers_is_refused_by_the_address_of_the_previous_exchange) {
  const ClockScreen& screen = GetParam();
  ClockBench bench(screen);
  bench.use_network("127");
  bench.dialogs.expect_message("Date/Time set in reader");
  bench.press("set_date_time");
  bench.port.writes.clear();
  bench.use_network("5");  // typed since, and not looked at before the refusal
  bench.dialogs.expect_message("Cannot read from address 127");
  bench.press("read_date_time");
  EXPECT_EQ(bench.port.written(), "");
  bench.program.services().link.closecomm();
  bench.dialogs.expect_message(screen.port_first ? "Comm port is not open" : "Cannot read from address 127");
  bench.press("read_date_time");
}

TEST_P(ClockOn, what_a_reader_sends_is_shown_as_it_is) {
  const ClockScreen& screen = GetParam();
  ClockBench bench(screen);
  bench.answer_presence(screen);
  bench.port.answer("t\r", "01<b>1\r");
  bench.press("read_date_time");
  EXPECT_EQ(bench.control<QLabel>("reader_date_time").textFormat(), Qt::PlainText);
  EXPECT_EQ(bench.shown("reader_date_time"), "<b/>1/2001  ::");
}

INSTANTIATE_TEST_SUITE_P(screens, ClockOn,
                         testing::Values(ClockScreen{"orinparam", ScreenCode::orinparam, true, true},
                                         ClockScreen{"keshsetup", ScreenCode::keshsetup, false, false},
                                         ClockScreen{"quorsetup", ScreenCode::quorsetup, true, true}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
