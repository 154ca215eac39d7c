#include "support/sim_port.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

readersim::Options one_reader(readersim::Family family) {
  readersim::Options options;
  options.family = family;
  return options;
}

/// How the readers hear a program with these settings; other ways no reader of theirs has.
std::optional<readersim::DataFormat> data_format(const CommSettings& settings) {
  if (settings.data_bits == 8 && settings.parity == Parity::none) {
    return readersim::DataFormat::eight_none;
  }
  if (settings.data_bits == 7 && settings.parity != Parity::none) {
    return settings.parity == Parity::even ? readersim::DataFormat::seven_even
                                           : readersim::DataFormat::seven_odd;
  }
  return std::nullopt;
}

}  // namespace

SimPort::SimPort(TestPump& pump, const readersim::Options& options) : pump_(pump), bench_(options) {
  pump.attach(*this);
}

SimPort::SimPort(TestPump& pump, readersim::Family family) : SimPort(pump, one_reader(family)) {}

readersim::Reader& SimPort::reader(int address) {
  readersim::Seat* const seat = bench_.line().find(address);
  if (seat == nullptr) {
    throw std::invalid_argument("no reader has address " + std::to_string(address));
  }
  return seat->reader;
}

std::string SimPort::console(std::string_view command) {
  std::string said = bench_.obey(command, now());
  EXPECT_FALSE(said.starts_with("? ")) << command << ": " << said;
  notice_hang_up();
  listen_later();
  return said;
}

std::string SimPort::written() const {
  std::string all;
  for (const std::string& bytes : writes) {
    all += bytes;
  }
  return all;
}

readersim::TimePoint SimPort::now() const {
  return std::chrono::duration_cast<readersim::TimePoint>(pump_.now().time_since_epoch());
}

void SimPort::listen() {
  for (const readersim::Line::Output& output : bench_.line().take_due(now())) {
    if (output.hang_up) {
      notice_hang_up();
      return;
    }
    if (is_open) {
      received_ += output.bytes;
    }
  }
  if (!received_.empty() && on_arrival) {
    on_arrival();
  }
  listen_later();
}

void SimPort::notice_hang_up() {
  if (bench_.line().hung_up() && is_open) {
    close();
    if (on_hang_up) {
      on_hang_up();
    }
  }
}

void SimPort::listen_later() {
  if (const auto due = bench_.line().next_due()) {
    pump_.after(std::max(*due - now(), readersim::TimePoint(0)), [this, alive = std::weak_ptr(alive_)] {
      if (!alive.expired()) {
        listen();
      }
    });
  }
}

bool SimPort::open(const CommSettings& settings) {
  close();
  is_open = !bench_.line().hung_up();
  bench_.line().set_host_baud(settings.baud);
  bench_.line().set_host_data(data_format(settings));
  return is_open;
}

void SimPort::close() {
  is_open = false;
  received_.clear();
}

bool SimPort::write(std::string_view bytes) {
  if (!is_open) {
    return false;
  }
  writes.emplace_back(bytes);
  if (before_write) {
    before_write(bytes);
  }
  bench_.line().receive(bytes, now());
  listen_later();
  return true;
}

std::optional<char> SimPort::read_char() {
  if (received_.empty()) {
    return std::nullopt;
  }
  const char character = received_.front();
  received_.erase(0, 1);
  return character;
}

std::string SimPort::device_of(int port_number) const {
  return "/dev/simulated" + std::to_string(port_number);
}

std::string SimPort::open_error(int /*port_number*/) const {
  return is_open ? "" : "No such device";
}
