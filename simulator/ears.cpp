#include "simulator/ears.h"

#include "simulator/wire.h"

#include <utility>

namespace readersim {
namespace {

// A line that never ends would grow for ever; no command is anywhere near this long.
constexpr std::size_t longest_pending = 4096;

bool ends_in_address(std::string_view bytes) {
  return !bytes.empty() && is_address_byte(bytes.back());
}

Heard frame(Heard::Kind kind, std::string bytes) {
  const int address = address_of(bytes.front());
  std::string text = bytes.substr(2, bytes.size() - 3);
  return {kind, address, std::move(text), std::move(bytes)};
}

void report_noise(std::string& bytes, std::vector<Heard>& heard) {
  if (!bytes.empty()) {
    heard.push_back({Heard::Kind::noise, -1, {}, std::exchange(bytes, {})});
  }
}

}  // namespace

std::vector<Heard> NetworkEar::hear(std::string_view bytes) {
  std::vector<Heard> heard;
  for (const char byte : bytes) {
    hear_one(byte, heard);
  }
  return heard;
}

void NetworkEar::hear_one(char byte, std::vector<Heard>& heard) {
  if (byte == stx && ends_in_address(pending_)) {
    const char address = pending_.back();
    pending_.pop_back();
    report_noise(pending_, heard);
    pending_ = {address, stx};
    in_frame_ = true;
    return;
  }
  if (byte == ack && !in_frame_) {
    report_noise(pending_, heard);
    heard.push_back({Heard::Kind::acknowledge, -1, {}, {ack}});
    return;
  }
  pending_ += byte;
  if (in_frame_ && byte == etx) {
    heard.push_back(frame(Heard::Kind::command, std::exchange(pending_, {})));
    in_frame_ = false;
  } else if ((!in_frame_ && byte == cr) || pending_.size() >= longest_pending) {
    report_noise(pending_, heard);
    in_frame_ = false;
  }
}

void NetworkEar::forget() {
  pending_.clear();
  in_frame_ = false;
}

std::vector<Heard> PlainEar::hear(std::string_view bytes) {
  std::vector<Heard> heard;
  for (const char byte : bytes) {
    if (byte == ack && pending_.empty()) {
      heard.push_back({Heard::Kind::acknowledge, -1, {}, {ack}});
      continue;
    }
    pending_ += byte;
    if (pending_.size() == 2) {
      in_frame_ = is_address_byte(pending_[0]) && byte == stx;
    }
    if (in_frame_ && byte == etx) {
      heard.push_back(frame(Heard::Kind::foreign, std::exchange(pending_, {})));
    } else if (!in_frame_ && byte == cr) {
      std::string text = pending_.substr(0, pending_.size() - 1);
      heard.push_back({Heard::Kind::command, -1, std::move(text), std::exchange(pending_, {})});
    } else if (byte == cr || pending_.size() >= longest_pending) {
      report_noise(pending_, heard);  // a frame that was ended with CR, or no end at all
    } else {
      continue;
    }
    in_frame_ = false;
  }
  return heard;
}

void PlainEar::forget() {
  pending_.clear();
  in_frame_ = false;
}

}  // namespace readersim
