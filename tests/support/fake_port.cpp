#include "support/fake_port.h"

#include <algorithm>

void FakePort::answer(std::string_view written, std::string_view reply, std::chrono::milliseconds delay) {
  answers_.push_back({std::string(written), std::string(reply), delay});
}

void FakePort::arrive(std::string_view bytes, std::chrono::milliseconds delay) {
  pump_.after(delay, [this, text = std::string(bytes)] {
    if (is_open) {
      received_.insert(received_.end(), text.begin(), text.end());
      if (on_arrival) {
        on_arrival();
      }
    }
  });
}

void FakePort::hang_up() {
  is_open = false;
  received_.clear();
  if (on_hang_up) {
    on_hang_up();
  }
}

std::string FakePort::written() const {
  std::string all;
  for (const std::string& bytes : writes) {
    all += bytes;
  }
  return all;
}

bool FakePort::open(const CommSettings& settings) {
  close();
  opened_with.push_back(std::to_string(settings.port_number) + ":" + settings_string(settings));
  is_open = openable;
  return openable;
}

void FakePort::close() {
  is_open = false;
  received_.clear();
}

bool FakePort::write(std::string_view bytes) {
  if (!is_open || !writable) {
    ++refused;
    return false;
  }
  writes.emplace_back(bytes);
  const auto match =
      std::find_if(answers_.begin(), answers_.end(), [&](const Answer& a) { return a.written == bytes; });
  if (match != answers_.end()) {
    const Answer found = *match;
    answers_.erase(match);
    arrive(found.reply, found.delay);
  }
  if (responder) {
    responder(bytes);
  }
  return true;
}

std::optional<char> FakePort::read_char() {
  if (received_.empty()) {
    return std::nullopt;
  }
  const char character = received_.front();
  received_.pop_front();
  return character;
}

void FakePort::discard_received() {
  ++discards;
  received_.clear();
}

std::string FakePort::device_of(int port_number) const {
  return "/dev/fake" + std::to_string(port_number);
}

std::string FakePort::open_error(int /*port_number*/) const {
  return openable ? "" : "Permission denied";
}
