#include "simulator/clock.h"

#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::Clock;
using readersim::Family;
using readersim::TimePoint;

TEST(Clock, starts_at_the_beginning_of_2000_and_runs) {
  const Clock clock;
  EXPECT_EQ(clock.stamp(TimePoint{0}), "000101000000");
  EXPECT_EQ(clock.read(TimePoint{0}).weekday, 6);
  EXPECT_EQ(clock.stamp(25h), "000102010000");
}

TEST(Clock, keeps_the_time_it_was_set_to_and_runs_on_from_there) {
  Clock clock;
  ASSERT_TRUE(clock.set("0104151305097", 100s));
  EXPECT_EQ(clock.stamp(100s), "010415130509");
  EXPECT_EQ(clock.stamp(100s + 999ms), "010415130509");
  EXPECT_EQ(clock.stamp(101s), "010415130510");
  EXPECT_EQ(clock.read(100s).weekday, 7);
  EXPECT_EQ(clock.read(100s).minute_of_day(), 13 * 60 + 5);
}

TEST(Clock, passes_midnight_month_and_year_and_knows_leap_days) {
  Clock clock;
  ASSERT_TRUE(clock.set("9912312359595", 0s));
  EXPECT_EQ(clock.stamp(1s), "000101000000");
  EXPECT_EQ(clock.read(1s).weekday, 6);
  ASSERT_TRUE(clock.set("0402282359596", 0s));
  EXPECT_EQ(clock.stamp(1s), "040229000000");
  ASSERT_TRUE(clock.set("0302282359595", 0s));
  EXPECT_EQ(clock.stamp(1s), "030301000000");
}

TEST(Clock, keeps_a_day_of_the_week_that_does_not_fit_the_date) {
  Clock clock;
  ASSERT_TRUE(clock.set("0104152359593", 0s));
  EXPECT_EQ(clock.read(0s).weekday, 3);
  EXPECT_EQ(clock.read(1s).weekday, 4);
  EXPECT_EQ(clock.read(1s + 96h).weekday, 1);
}

TEST(Clock, refuses_what_is_no_time_and_keeps_the_old_one) {
  Clock clock;
  ASSERT_TRUE(clock.set("0104151305097", 0s));
  for (const char* text : {"", "010415130509", "01041513050977", "0104151305090", "0104151305098",
                           "0113151305097", "0100151305097", "0102301305097", "0302291305097",
                           "0104152405097", "0104151360097", "0104151305607", "01041513050a7"}) {
    EXPECT_FALSE(clock.set(text, 0s)) << text;
  }
  EXPECT_EQ(clock.stamp(0s), "010415130509");
}

TEST(ClockCommands, set_is_acknowledged_and_read_gives_twelve_digits) {
  for (const Family family :
       {Family::orin, Family::orinta, Family::ferro_kesh, Family::glint_kesh, Family::quor}) {
    Host host;
    host.line.add(family, 5, true);
    EXPECT_TRUE(bytes_equal(host.ask(5, "+0104151305097"), "\x06"));
    EXPECT_TRUE(bytes_equal(host.ask(5, "t"),
                            "\x06\x02"
                            "010415130510\x03"));
    EXPECT_TRUE(bytes_equal(host.ask(127, "+9912312359595"), ""));
    EXPECT_EQ(Host::data(host.ask(5, "t")), "000101000000");
  }
}

TEST(ClockCommands, on_a_plain_line_come_without_acknowledge) {
  Host host;
  host.line.add(Family::quor, 0, false);
  EXPECT_TRUE(bytes_equal(host.tell("+0104151305097"), ""));
  EXPECT_TRUE(bytes_equal(host.tell("t"), "010415130510\r"));
}

TEST(ClockCommands, a_vell_has_no_clock) {
  Host host;
  host.line.add(Family::vell, 5, true);
  EXPECT_TRUE(bytes_equal(host.ask(5, "t"), ""));
  EXPECT_TRUE(bytes_equal(host.ask(5, "+0104151305097"), ""));
}

}  // namespace
