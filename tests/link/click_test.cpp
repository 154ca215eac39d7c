#include "link/click.h"

#include "support/link_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

struct click_runner : testing::Test, LinkBench {};

TEST_F(click_runner, runs_the_handler_at_once) {
  int runs = 0;
  clicks.run([&] { ++runs; });
  EXPECT_EQ(runs, 1);
}

TEST_F(click_runner, a_click_error_becomes_its_box) {
  dialogs.expect_message("Overflow");
  clicks.run([] { throw ClickError("Overflow"); });
}

TEST_F(click_runner, any_other_failure_becomes_a_box_too) {
  dialogs.expect_message("no space left");
  clicks.run([] { throw std::runtime_error("no space left"); });
  dialogs.expect_message(std::bad_alloc().what());
  clicks.run([] { throw std::bad_alloc(); });
}

TEST_F(click_runner, the_handler_is_over_when_its_box_is_shown) {
  bool unwound = false;
  struct Guard {
    bool& flag;
    ~Guard() { flag = true; }
  };
  dialogs.expect_message("Type mismatch", [&] { EXPECT_TRUE(unwound); });
  clicks.run([&] {
    const Guard guard{unwound};
    throw ClickError("Type mismatch");
  });
}

TEST_F(click_runner, the_program_runs_on_after_a_box) {
  dialogs.expect_message("Overflow");
  clicks.run([] { throw ClickError("Overflow"); });
  bool ran = false;
  clicks.run([&] { ran = true; });
  EXPECT_TRUE(ran);
}

TEST_F(click_runner, closing_the_program_ends_the_handler_without_a_box) {
  clicks.run([&] {
    pump.close_program();
    pump.yield();
    FAIL() << "went on after the program was closed";
  });
}

TEST_F(click_runner, a_box_after_closing_is_not_shown) {
  clicks.run([&] {
    pump.close_program();
    throw ClickError("Overflow");
  });
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(click_runner, nothing_starts_once_the_program_is_closed) {
  pump.close_program();
  clicks.run([] { FAIL() << "a click ran after the program was closed"; });
}

TEST_F(click_runner, a_click_during_a_pause_waits_for_its_end) {
  std::vector<std::string> order;
  // An assistive client's click comes through a pause: no event filter holds it back.
  pump.after(50ms, [&] { clicks.run([&] { order.emplace_back("click"); }); });
  clicks.run([&] {
    pump.sleep(200ms);
    order.emplace_back("pause over");
  });
  pump.idle(1ms);
  EXPECT_EQ(order, (std::vector<std::string>{"pause over", "click"}));
}

TEST_F(click_runner, a_click_during_a_pause_that_the_program_ends_in_never_runs) {
  pump.after(50ms, [&] { clicks.run([] { FAIL() << "ran after the program was closed"; }); });
  pump.after(60ms, [&] { pump.close_program(); });
  clicks.run([&] { pump.sleep(200ms); });
  pump.idle(1s);
}

}  // namespace
