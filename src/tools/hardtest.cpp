#include "tools/hardtest.h"

#include "link/frame.h"
#include "link/numbers.h"
#include "tools/flag_guard.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr int yields_after_a_step = 10;

}  // namespace

std::chrono::milliseconds step_wait(std::string_view line) {
  constexpr double longest = std::numeric_limits<std::int32_t>::max();
  line = trimmed(line);
  if (line.starts_with('+')) {
    line.remove_prefix(1);
  }
  double number = 0;
  const auto result =
      std::from_chars(line.data(), line.data() + line.size(), number, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    number = line.starts_with('-') ? 0 : longest;
  } else if (!std::isfinite(number)) {
    number = 0;  // a word that would do for a number elsewhere
  }
  return std::chrono::milliseconds(std::llround(std::clamp(number, 0.0, longest)));
}

void HardwareTest::start(std::chrono::milliseconds continuous_delay) {
  // A start that fails leaves a running test as it is, the wish to end it included.
  if (!running_) {
    stop_requested_ = false;
  }
  display_.clear_steps();
  hardtest(continuous_delay);
}

void HardwareTest::hardtest(std::chrono::milliseconds continuous_delay) {
  if (!link_.checkcom()) {
    return;
  }
  display_.show_profile();
  if (!link_.setnetaddr()) {
    return;
  }
  profile_.tables = load_profile(profile_.testprofilefile);
  continuous_delay_ = continuous_delay;
  stop_requested_ = false;
  if (running_) {
    start_over_ = true;
    return;
  }
  const FlagGuard running(running_);
  run_until_stopped();
}

void HardwareTest::run_until_stopped() {
  for (;;) {
    start_over_ = false;
    run();
    link_.clearcomm();
    if (start_over_) {
      continue;
    }
    if (continuous_delay_.count() == 0 || stop_requested_ || !link_.comopen()) {
      return;
    }
    pump_.sleep(continuous_delay_);
  }
}

void HardwareTest::run() {
  display_.clear_steps();
  display_.clear_output();
  for (std::size_t step = 0; step < TestProfile::steps; ++step) {
    const std::string& caption = profile_.tables.captions.at(step);
    if (trimmed(caption).empty()) {
      if (step == 0) {
        yield_to_the_receiver();  // or an empty profile that runs on and on could not be stopped
      }
      return;
    }
    display_.add_step(caption);
    send(profile_.tables.commands.at(step));
    pump_.sleep(step_wait(profile_.tables.waits.at(step)));
    yield_to_the_receiver();
    display_.repaint_output();
    if (must_end_run()) {
      return;
    }
  }
}

/// Raw, character by character, and whatever becomes of it. A line that takes no more is given up, for it
/// takes its time to say so.
void HardwareTest::send(std::string_view command) {
  if (link_.network_mode()) {
    const std::array lead_in{static_cast<char>(link_.address_byte()), wire::stx};
    if (!link_.write({lead_in.data(), lead_in.size()})) {
      return;
    }
  }
  const auto sent = [this](char character) { return link_.write({&character, 1}); };
  const auto on_the_wire = [](char character) {
    return character == TestProfile::nul_stand_in ? wire::nul : character;
  };
  if (std::all_of(command.begin(), command.end(),
                  [&](char character) { return sent(on_the_wire(character)); })) {
    sent(link_.network_mode() ? wire::etx : wire::cr);
  }
}

/// Lets the terminal's receiver show what has come. Only full yields do: its tick comes a millisecond after
/// a byte, and a waiting byte must not use up the count before it.
void HardwareTest::yield_to_the_receiver() {
  for (int count = 0; count < yields_after_a_step; ++count) {
    pump_.yield(Wake::deadline);
  }
}

bool HardwareTest::must_end_run() const {
  return stop_requested_ || start_over_ || !link_.comopen();
}
