#include "tools/poll.h"

#include "link/deadline.h"
#include "link/frame.h"
#include "link/numbers.h"
#include "link/timings.h"
#include "tools/caret_code.h"
#include "tools/flag_guard.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

using namespace std::string_view_literals;

constexpr std::string_view invalid_addresses = "Invalid Addresses selected for poll";
constexpr std::string_view address_too_high = "Address must be < 127";

constexpr int full_display = 30;           // lines
constexpr std::size_t shortest_reply = 3;  // characters after the acknowledge

/// A time as typed; below 0 it is none.
std::chrono::milliseconds milliseconds_of(const std::string& text) {
  return std::chrono::milliseconds(std::max<int>(0, to_int16(text)));
}

PollColour colour_of(char second_character) {
  switch (second_character) {
    case wire::soh:
      return PollColour::red;
    case wire::eot:
      return PollColour::green;
    default:
      return PollColour::black;
  }
}

}  // namespace

void Poller::start(const PollBoxes& boxes) {
  if (!link_.checkcom()) {
    return;
  }
  // Before the checks, and the text colour stays as the last reply set it: both are meant.
  display_.clear();
  printed_lines_ = 0;
  stop_requested_ = false;
  const std::optional<Range> range = checked_range(boxes);
  if (!range) {
    return;
  }
  range_ = *range;
  if (busy_.polling_on) {
    new_range_ = true;
    return;
  }
  const FlagGuard polling(busy_.polling_on);
  poll_until_stopped();
}

std::optional<Poller::Range> Poller::checked_range(const PollBoxes& boxes) {
  const int first = to_int16(boxes.first_address);
  const int last = to_int16(boxes.last_address);
  const Range range{first, last, milliseconds_of(boxes.delay), milliseconds_of(boxes.time_out)};
  if (first > last || first < 0) {
    dialogs_.message(invalid_addresses);
    return std::nullopt;
  }
  if (last > highest_address) {
    dialogs_.message(address_too_high);
    return std::nullopt;
  }
  return range;
}

void Poller::poll_until_stopped() {
  new_range_ = false;
  int address = range_.first;
  while (!stop_requested_ && link_.comopen()) {
    poll(address);
    const bool start_over = std::exchange(new_range_, false) || address >= range_.last;
    address = start_over ? range_.first : address + 1;
  }
}

void Poller::poll(int address) {
  pump_.sleep(range_.delay);
  link_.clearcomm();
  link_.write(network_frame(address_byte_of(address), "?"));
  switch (await_reply()) {
    case Reply::character:
      take_reply(address);
      break;
    case Reply::time_out:
      if (show_all_) {
        print(address, " TIMEOUT");
      } else {
        acknowledge_twice();  // only when no line is shown: that is meant
      }
      break;
    case Reply::none:
      break;
  }
}

Poller::Reply Poller::await_reply() {
  const Deadline deadline(pump_, range_.time_out);
  // A time-out of 0 has come before the first yield begins, and so cannot end it: this does.
  const Deadline first_look(pump_, timings::first_look_at_poll);
  for (;;) {
    pump_.yield();
    if (new_range_ || !link_.comopen()) {
      return Reply::none;
    }
    if (deadline.expired()) {
      return Reply::time_out;
    }
    if (link_.bytes_waiting() >= 1) {
      return Reply::character;
    }
  }
}

void Poller::take_reply(int address) {
  if (link_.read_char() == wire::ack) {
    pump_.sleep(timings::rest_of_poll_reply);
    if (const std::size_t length = link_.bytes_waiting(); length >= shortest_reply) {
      print_reply(address, length);
      link_.write_ack();
      return;
    }
  }
  unknown_response(address);
}

void Poller::print_reply(int address, std::size_t length) {
  std::string text;
  for (std::size_t index = 0; index < length; ++index) {
    const char character = link_.read_char().value_or(wire::nul);
    text += is_control(character) ? caret_code(character) : std::string{character};
    if (index == 1) {
      colour_ = colour_of(character);
    }
  }
  print(address, text);
}

void Poller::unknown_response(int address) {
  pump_.sleep(timings::rest_of_poll_reply);
  link_.clearcomm();
  if (show_all_) {
    print(address, "Unknown Response");  // no blank after the address: that is meant
  }
  acknowledge_twice();
}

/// In the colour of the last good reply, whatever the line says: that is meant.
void Poller::print(int address, std::string_view text) {
  checkline();
  display_.print("Unit " + with_leading_zeros(address, 3) + std::string(text), colour_);
  ++printed_lines_;
}

void Poller::checkline() {
  if (printed_lines_ >= full_display) {
    display_.clear();
    printed_lines_ = 0;
  }
}

/// A line that takes no more is given up, for it takes its time to say so.
void Poller::acknowledge_twice() {
  if (link_.write_ack()) {
    link_.write_ack();
  }
}

void Poller::reset_all_readers() {
  if (!link_.checkcom()) {
    return;
  }
  const std::string reset = introduced("U");
  if (link_.write(plain_frame(reset))) {
    link_.write(network_frame(address_byte_of(global_address), reset));
  }
}
