// What every pump has from its base, and the virtual pump that the other tests stand on.
#include "link/event_pump.h"

#include "link/deadline.h"
#include "support/link_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::chrono_literals;

struct event_pump : testing::Test, LinkBench {};
using deadline = event_pump;

TEST_F(event_pump, a_yield_lasts_ten_milliseconds) {
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 10ms);
}

TEST_F(event_pump, a_byte_ends_a_yield) {
  port.arrive("x", 3ms);
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 3ms);
}

TEST_F(event_pump, clicks_do_not_end_a_yield) {
  int clicks_run = 0;
  pump.after(1ms, [&] { ++clicks_run; });
  pump.after(2ms, [&] { ++clicks_run; });
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 10ms);
  EXPECT_EQ(clicks_run, 2);
}

TEST_F(event_pump, a_yield_for_deadlines_only_goes_on_over_bytes) {
  port.arrive("x", 3ms);
  pump.yield(Wake::deadline);
  EXPECT_EQ(pump.elapsed(), 10ms);
}

TEST_F(event_pump, such_a_yield_lets_a_ticker_take_the_bytes) {
  std::string shown;
  std::unique_ptr<Ticker> terminal;
  terminal = pump.make_ticker(1ms, [&] {
    terminal->stop();
    while (const auto character = port.read_char()) {
      shown += *character;
    }
  });
  port.on_arrival = [&] { terminal->start(); };
  port.arrive("reply", 3ms);
  pump.yield(Wake::deadline);
  EXPECT_EQ(shown, "reply");
}

TEST_F(event_pump, a_close_ends_yield_and_pause_at_once) {
  pump.after(4ms, [&] { pump.close_program(); });
  EXPECT_THROW(pump.yield(), ProgramClosing);
  EXPECT_EQ(pump.elapsed(), 4ms);
  EXPECT_THROW(pump.yield(), ProgramClosing);
  EXPECT_THROW(pump.sleep(200ms), ProgramClosing);
  EXPECT_EQ(pump.elapsed(), 4ms);
}

TEST_F(deadline, ends_a_yield) {
  const Deadline time_out{pump, 4ms};
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 4ms);
  EXPECT_TRUE(time_out.expired());
}

TEST_F(deadline, is_not_expired_before_its_time) {
  const Deadline time_out{pump, 25ms};
  pump.yield();
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 20ms);
  EXPECT_FALSE(time_out.expired());
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 25ms);
  EXPECT_TRUE(time_out.expired());
}

TEST_F(deadline, counts_anew_from_its_restart) {
  Deadline time_out{pump, 15ms};
  pump.idle(14ms);
  time_out.restart();
  pump.idle(14ms);
  EXPECT_FALSE(time_out.expired());
  pump.idle(1ms);
  EXPECT_TRUE(time_out.expired());
}

TEST_F(deadline, that_has_come_does_not_shorten_the_yields_of_others) {
  const Deadline over{pump, 1ms};
  pump.yield();
  ASSERT_TRUE(over.expired());
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 11ms);
}

TEST_F(deadline, of_the_outer_wait_stays_when_the_inner_one_goes) {
  const Deadline outer{pump, 30ms};
  {
    Deadline inner{pump, 30ms};
    inner.restart();
    pump.idle(5ms);
    inner.restart();
  }
  pump.yield();
  pump.yield();
  EXPECT_FALSE(outer.expired());
  pump.yield();
  EXPECT_EQ(pump.elapsed(), 30ms);
  EXPECT_TRUE(outer.expired());
}

TEST_F(event_pump, a_ticker_ticks_every_interval_until_stopped) {
  int ticks = 0;
  const auto ticker = pump.make_ticker(100ms, [&] { ++ticks; });
  pump.idle(1s);
  EXPECT_EQ(ticks, 0);
  ticker->start();
  EXPECT_TRUE(ticker->running());
  pump.idle(350ms);
  EXPECT_EQ(ticks, 3);
  ticker->stop();
  EXPECT_FALSE(ticker->running());
  pump.idle(1s);
  EXPECT_EQ(ticks, 3);
}

}  // namespace
