#include "link/reader_clock.h"

#include "link/qt_event_pump.h"
#include "support/link_bench.h"
#include "support/pty_bench.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

constexpr LocalTime easter_sunday{2001, 4, 15, 13, 5, 9, 7};

struct reader_clock : testing::Test, LinkBench {
  std::unique_ptr<ReaderClock> clock;

  reader_clock() {
    pump.clock = easter_sunday;
    clock = std::make_unique<ReaderClock>(link, pump, dialogs);
  }
};

using set_date_time = reader_clock;
using read_date_time = reader_clock;

// --- The texts ------------------------------------------------------------------------------------

TEST(clock_text, is_month_day_year_two_blanks_time) {
  EXPECT_EQ(clock_text(easter_sunday), "04/15/2001  13:05:09");
  EXPECT_EQ(clock_text({1999, 12, 31, 0, 0, 0, 5}), "12/31/1999  00:00:00");
}

TEST(clock_text_of_reply, puts_month_first) {
  EXPECT_EQ(clock_text_of_reply("010415130509"), "04/15/2001  13:05:09");
  EXPECT_EQ(clock_text_of_reply("991231235959"), "12/31/1999  23:59:59");
}

TEST(clock_text_of_reply, years_below_20_are_of_this_century_and_20_is_1920) {
  EXPECT_EQ(clock_text_of_reply("000101000000"), "01/01/2000  00:00:00");
  EXPECT_EQ(clock_text_of_reply("190101000000"), "01/01/2019  00:00:00");
  EXPECT_EQ(clock_text_of_reply("200101000000"), "01/01/1920  00:00:00");
  EXPECT_EQ(clock_text_of_reply("210101000000"), "01/01/1921  00:00:00");
}

TEST(clock_text_of_reply, is_not_checked) {
  EXPECT_EQ(clock_text_of_reply("999999999999"), "99/99/1999  99:99:99");
  EXPECT_EQ(clock_text_of_reply("abcdefghijkl"), "cd/ef/19ab  gh:ij:kl");
}

TEST(clock_text_of_reply, of_a_short_reply_is_the_pieces_that_exist) {
  EXPECT_EQ(clock_text_of_reply("01041513"), "04/15/2001  13::");
  EXPECT_EQ(clock_text_of_reply("01041"), "04/1/2001  ::");
  EXPECT_EQ(clock_text_of_reply("9"), "//199  ::");
  EXPECT_EQ(clock_text_of_reply(""), "//20  ::");
}

TEST(clock_text_of_reply, ignores_what_follows_the_seconds) {
  EXPECT_EQ(clock_text_of_reply("0104151305097890"), "04/15/2001  13:05:09");
}

TEST(set_clock_command, is_plus_year_to_second_and_weekday) {
  EXPECT_EQ(set_clock_command("04/15/2001  13:05:09", 7), "+0104151305097");
  EXPECT_EQ(set_clock_command("12/31/1999  23:59:58", 1), "+9912312359581");
}

// --- The PC clock ---------------------------------------------------------------------------------

TEST_F(reader_clock, the_pc_clock_is_filled_before_the_first_tick) {
  EXPECT_EQ(pump.elapsed(), 0ms);
  EXPECT_EQ(clock->pc_clock_text(), "04/15/2001  13:05:09");
  EXPECT_EQ(clock->reader_clock_text(), "");
}

TEST_F(reader_clock, the_pc_clock_follows_once_a_second) {
  Texts shown;
  QObject::connect(clock.get(), &ReaderClock::pc_clock_changed, clock.get(),
                   [&] { shown.push_back(clock->pc_clock_text()); });
  pump.clock.second = 10;
  pump.idle(999ms);
  EXPECT_TRUE(shown.empty());
  pump.idle(1ms);
  EXPECT_EQ(shown, (Texts{"04/15/2001  13:05:10"}));
  pump.idle(10s);
  EXPECT_EQ(shown.size(), 11U);
}

TEST_F(reader_clock, the_pc_clock_goes_on_during_a_wait) {
  int ticks = 0;
  QObject::connect(clock.get(), &ReaderClock::pc_clock_changed, clock.get(), [&] { ++ticks; });
  EXPECT_FALSE(link.getack());
  EXPECT_EQ(ticks, 1) << "in a second of polls";
}

TEST_F(reader_clock, stops_with_its_object) {
  EXPECT_EQ(pump.running_tickers, 1);
  clock.reset();
  EXPECT_EQ(pump.running_tickers, 0);
  pump.idle(5s);  // nor does a tick come that was already due
}

// --- Set Date/Time --------------------------------------------------------------------------------

TEST_F(set_date_time, on_a_plain_line_reports_success_without_an_acknowledge) {
  dialogs.expect_message("Date/Time set in reader");
  clock->set_date_time();
  EXPECT_TRUE(bytes_equal(port.written(), "+0104151305097\r"));
  EXPECT_EQ(pump.elapsed(), 0ms);
}

TEST_F(set_date_time, on_a_network_waits_for_the_acknowledge) {
  use_network("5");
  port.answer("\x85\x02+0104151305097\x03", "\x06", 300ms);
  dialogs.expect_message("Date/Time set in reader");
  clock->set_date_time();
  EXPECT_EQ(port.writes.size(), 1U);
  EXPECT_EQ(pump.elapsed(), 300ms);
}

TEST_F(set_date_time, on_a_network_without_acknowledge_is_an_error) {
  use_network("5");
  dialogs.expect_message("Error communicating with reader");
  clock->set_date_time();
  EXPECT_EQ(pump.yields, 100);
}

TEST_F(set_date_time, at_the_global_address_reports_success_without_waiting) {
  use_network("127");
  dialogs.expect_message("Date/Time set in reader");
  clock->set_date_time();
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02+0104151305097\x03"));
  EXPECT_EQ(pump.yields, 0);
}

TEST_F(set_date_time, sends_the_shown_time_and_todays_weekday) {
  // The click falls right after midnight: the clock shown has not ticked yet.
  pump.clock = {2001, 4, 16, 0, 0, 0, 1};
  dialogs.expect_message("Date/Time set in reader");
  clock->set_date_time();
  EXPECT_TRUE(bytes_equal(port.written(), "+0104151305091\r"));
}

TEST_F(set_date_time, clears_the_line_first) {
  use_network("5");
  port.arrive("\x06");
  pump.idle(1ms);
  dialogs.expect_message("Error communicating with reader");
  clock->set_date_time();
}

TEST_F(set_date_time, stops_at_a_closed_port) {
  link.closecomm();
  settings.reader_address = "";
  dialogs.expect_message("Comm port is not open");
  clock->set_date_time();
}

TEST_F(set_date_time, stops_at_a_blank_address) {
  settings.reader_address = "";
  dialogs.expect_message("A Network address has not been set");
  clock->set_date_time();
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(set_date_time, claims_no_success_when_the_line_takes_no_bytes) {
  port.writable = false;
  dialogs.expect_message("Error communicating with reader");
  clock->set_date_time();
}

// --- Read Date/Time -------------------------------------------------------------------------------

TEST_F(read_date_time, readdt_on_a_plain_line) {
  Texts shown;
  QObject::connect(clock.get(), &ReaderClock::reader_clock_changed, clock.get(),
                   [&] { shown.push_back(clock->reader_clock_text()); });
  port.answer("t\r", "991231235959\r");
  clock->readdt();
  EXPECT_EQ(clock->reader_clock_text(), "12/31/1999  23:59:59");
  EXPECT_EQ(shown, (Texts{"12/31/1999  23:59:59"}));
  EXPECT_TRUE(bytes_equal(port.written(), "t\r"));
  EXPECT_EQ(link.last_response(), "991231235959");
}

TEST_F(read_date_time, on_a_network_ends_with_two_acks_and_that_is_meant) {
  use_network("5");
  port.answer("\x85\x02t\x03",
              "\x06\x02"
              "010415130509\x03");
  clock->readdt();
  EXPECT_EQ(clock->reader_clock_text(), "04/15/2001  13:05:09");
  EXPECT_EQ(port.writes, (Texts{"\x85\x02t\x03", "\x06", "\x06"}));
}

TEST_F(read_date_time, a_reply_without_leading_ack_is_an_error) {
  use_network("5");
  port.answer("\x85\x02t\x03",
              "\x02"
              "010415130509\x03");
  dialogs.expect_message("error reading from reader");
  clock->readdt();
  EXPECT_EQ(clock->reader_clock_text(), "");
  EXPECT_TRUE(bytes_equal(port.written(), "\x85\x02t\x03")) << "a failed read is not acknowledged";
}

TEST_F(read_date_time, silence_is_an_error_after_100_ms_and_leaves_the_text) {
  port.answer("t\r", "991231235959\r");
  clock->readdt();
  const auto before = pump.elapsed();
  dialogs.expect_message("error reading from reader");
  clock->readdt();
  EXPECT_EQ(pump.elapsed() - before, 100ms);
  EXPECT_EQ(clock->reader_clock_text(), "12/31/1999  23:59:59");
}

TEST_F(read_date_time, a_short_reply_shows_the_pieces_that_exist) {
  port.answer("t\r", "01041513\r");
  clock->readdt();
  EXPECT_EQ(clock->reader_clock_text(), "04/15/2001  13::");
}

TEST_F(read_date_time, takes_no_more_than_20_characters) {
  port.answer("t\r", "010415130509ABCDEFGHIJKL\r");
  clock->readdt();
  EXPECT_EQ(link.last_response(), "010415130509ABCDEFGH");
  EXPECT_EQ(port.waiting(), "") << "the line is cleared afterwards";
}

TEST_F(read_date_time, readdt_stops_at_a_closed_port_and_at_a_blank_address) {
  settings.reader_address = "";
  dialogs.expect_message("A Network address has not been set");
  clock->readdt();
  link.closecomm();
  dialogs.expect_message("Comm port is not open");
  clock->readdt();
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(read_date_time, readdt_of_a_line_that_takes_no_bytes_is_an_error) {
  port.writable = false;
  dialogs.expect_message("error reading from reader");
  clock->readdt();
}

TEST_F(read_date_time, orinparam_asks_for_the_readers_presence_first) {
  port.answer("V\r", "0123456789\r");
  port.answer("t\r", "010415130509\r");
  clock->read_date_time(orinparam_clock_reading);
  EXPECT_EQ(port.writes, (Texts{"V\r", "t\r"}));
  EXPECT_EQ(clock->reader_clock_text(), "04/15/2001  13:05:09");
}

TEST_F(read_date_time, orinparam_stops_at_a_reader_that_does_not_answer) {
  dialogs.expect_message("Reader is not Connected");
  clock->read_date_time(orinparam_clock_reading);
  EXPECT_EQ(port.writes, (Texts{"V\r"}));
}

TEST_F(read_date_time, keshsetup_does_not_ask_for_presence) {
  port.answer("t\r", "010415130509\r");
  clock->read_date_time(keshsetup_clock_reading);
  EXPECT_EQ(port.writes, (Texts{"t\r"}));
}

TEST_F(read_date_time, both_refuse_to_read_from_all_readers) {
  use_network("127");
  EXPECT_TRUE(link.setnetaddr());
  for (const ClockReading& reading : {orinparam_clock_reading, keshsetup_clock_reading}) {
    dialogs.expect_message("Cannot read from address 127");
    clock->read_date_time(reading);
  }
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(read_date_time, the_refusal_goes_by_the_address_of_the_previous_exchange_and_that_is_meant) {
  use_network("127");
  EXPECT_TRUE(link.setnetaddr());
  settings.reader_address = "5";
  for (const ClockReading& reading : {orinparam_clock_reading, keshsetup_clock_reading}) {
    dialogs.expect_message("Cannot read from address 127");
    clock->read_date_time(reading);
    EXPECT_EQ(link.address_byte(), 0xFF) << "the address box is not looked at";
  }
}

TEST_F(read_date_time, an_address_just_changed_to_127_is_not_refused_yet) {
  use_network("5");
  EXPECT_TRUE(link.setnetaddr());
  settings.reader_address = "127";
  dialogs.expect_message("error reading from reader");
  clock->read_date_time(keshsetup_clock_reading);
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02t\x03"));
}

TEST_F(read_date_time, address_127_is_read_from_when_network_mode_is_off) {
  settings.reader_address = "127";
  EXPECT_TRUE(link.setnetaddr());
  port.answer("t\r", "010415130509\r");
  clock->read_date_time(keshsetup_clock_reading);
  EXPECT_EQ(clock->reader_clock_text(), "04/15/2001  13:05:09");
}

TEST_F(read_date_time, a_closed_port_comes_before_the_refusal_on_orinparam) {
  use_network("127");
  EXPECT_TRUE(link.setnetaddr());
  link.closecomm();
  dialogs.expect_message("Comm port is not open");
  clock->read_date_time(orinparam_clock_reading);
}

TEST_F(read_date_time, a_closed_port_comes_after_the_refusal_on_keshsetup) {
  use_network("127");
  EXPECT_TRUE(link.setnetaddr());
  link.closecomm();
  dialogs.expect_message("Cannot read from address 127");
  clock->read_date_time(keshsetup_clock_reading);
}

TEST_F(read_date_time, both_stop_at_a_closed_port_and_at_a_blank_address_with_one_box) {
  for (const ClockReading& reading : {orinparam_clock_reading, keshsetup_clock_reading}) {
    settings.reader_address = "";
    dialogs.expect_message("A Network address has not been set");
    clock->read_date_time(reading);
    link.closecomm();
    dialogs.expect_message("Comm port is not open");
    clock->read_date_time(reading);
    ASSERT_TRUE(link.opencomm());
  }
  EXPECT_TRUE(port.writes.empty());
}

TEST_F(read_date_time, closing_the_program_meanwhile_ends_it_without_a_box) {
  pump.after(30ms, [&] { pump.close_program(); });
  clicks.run([&] { clock->read_date_time(orinparam_clock_reading); });
  EXPECT_TRUE(dialogs.shown.empty());
}

// --- In the real event loop -----------------------------------------------------------------------

TEST(real_clock, costs_one_wake_up_a_second) {
  PtyBench bench;
  ReaderClock clock{bench.link, bench.pump, bench.dialogs};
  int wakes = 0;
  int ticks = 0;
  QObject::connect(QCoreApplication::eventDispatcher(), &QAbstractEventDispatcher::awake, &clock,
                   [&] { ++wakes; });
  QObject::connect(&clock, &ReaderClock::pc_clock_changed, &clock, [&] { ++ticks; });
  QEventLoop loop;
  QTimer::singleShot(1500ms, &loop, &QEventLoop::quit);
  loop.exec();
  EXPECT_EQ(ticks, 1);
  EXPECT_LE(wakes, 4) << "in 1.5 seconds, the test's own timer among them";
}

}  // namespace
