#include "simulator/line.h"

#include "simulator/answer.h"
#include "simulator/trace.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace readersim {
namespace {

constexpr int bits_per_byte = 10;  // a start bit, seven and parity or eight, a stop bit

}  // namespace

Line::Line(Options options) : options_(options), random_(options.seed) {}

Seat& Line::add(Family family, int address, bool protocol_mode) {
  if (seats_.size() >= most_readers) {
    throw std::length_error("a line takes no more than " + std::to_string(most_readers) + " readers");
  }
  const int serial = 1001 + static_cast<int>(seats_.size());
  seats_.push_back(std::make_unique<Seat>(Seat{Reader{family, address, serial}, {}, true, TimePoint{0}}));
  seats_.back()->reader.protocol_mode = protocol_mode;
  return *seats_.back();
}

Seat* Line::find(int address) {
  const auto found = std::find_if(seats_.begin(), seats_.end(),
                                  [&](const auto& seat) { return seat->reader.address == address; });
  return found == seats_.end() ? nullptr : found->get();
}

void Line::send(Seat& seat, const Answer& answer, TimePoint earliest) {
  TimePoint at = std::max(earliest, seat.free_at);
  std::string sent;
  Output output;
  for (std::size_t i = 0; i < answer.bytes.size() && answer.hang_up_before.value_or(i + 1) > i; ++i) {
    const TimePoint before = answer.bytes[i].silence + byte_time(answer.baud);
    if (before > TimePoint{0} && !output.bytes.empty()) {
      put({std::exchange(output, {}), {}});
    }
    at += before;
    output.at = at;
    output.bytes += on_wire(answer.bytes[i].byte);
    sent += output.bytes.back();
  }
  seat.free_at = at;
  if (!sent.empty() || !answer.hang_up_before) {
    output.at = at;
    put({std::move(output), Event{at, Event::Kind::sent, seat.reader.address, sent, answer.meaning}});
  }
  if (answer.hang_up_before) {
    // What went before is heard: a line that goes takes with it what its other end has not read.
    put({Output{at + std::chrono::milliseconds{30}, "", true}, {}});
  }
}

void Line::put(Due due) {
  const auto place = std::upper_bound(due_.begin(), due_.end(), due,
                                      [](const Due& a, const Due& b) { return a.output.at < b.output.at; });
  due_.insert(place, std::move(due));
}

std::optional<TimePoint> Line::next_due() const {
  return due_.empty() ? std::nullopt : std::optional{due_.front().output.at};
}

std::vector<Line::Output> Line::take_due(TimePoint now) {
  std::vector<Output> taken;
  while (!due_.empty() && due_.front().output.at <= now) {
    const Due due = std::move(due_.front());
    due_.pop_front();
    if (due.event) {
      tell(*due.event);
    }
    if (due.output.hang_up) {
      taken.push_back(due.output);
      hang_up(due.output.at);
      break;
    }
    if (!due.output.bytes.empty()) {
      taken.push_back(due.output);
    }
  }
  return taken;
}

std::string Line::take_bytes(TimePoint now) {
  std::string bytes;
  for (const Output& output : take_due(now)) {
    bytes += output.bytes;
  }
  return bytes;
}

void Line::set_host_baud(std::optional<int> baud) {
  if (baud != host_baud_) {
    host_baud_ = baud;
    network_ear_.forget();
    plain_ear_.forget();
  }
}

void Line::set_host_data(std::optional<DataFormat> data) {
  host_data_ = data;
}

Swipe Line::swipe(Seat& seat, std::string_view card, TimePoint now) {
  if (!seat.present) {
    return {false, {}, "the reader is unplugged"};
  }
  Swipe result = readersim::swipe(seat.reader, card, now);
  note("card \"" + visible(card) + "\" " + result.meaning, now, seat.reader.address);
  if (result.unsolicited.empty() || hung_up_) {
    return result;
  }
  Answer answer;
  answer.baud = seat.reader.format.baud;
  const bool understood = understands(seat.reader);
  for (const char byte : result.unsolicited) {
    // At another speed the host makes out something, but nothing that was said.
    answer.bytes.push_back({understood ? byte : static_cast<char>(random_() & 0xFFU)});
  }
  answer.meaning = understood ? "what was read" : "what was read, at another speed or format than the host's";
  send(seat, answer, now);
  return result;
}

void Line::hang_up(TimePoint now) {
  if (!hung_up_) {
    hung_up_ = true;
    due_.clear();
    network_ear_.forget();
    plain_ear_.forget();
    note("the line hangs up", now);
  }
}

void Line::replug(TimePoint now) {
  if (hung_up_) {
    hung_up_ = false;
    note("the line is back", now);
  }
}

void Line::note(std::string text, TimePoint now, int address) {
  tell({now, Event::Kind::note, address, "", std::move(text)});
}

char Line::on_wire(char byte) const {
  return host_data_.value_or(DataFormat::eight_none) == DataFormat::eight_none
             ? byte
             : static_cast<char>(byte & 0x7F);
}

TimePoint Line::byte_time(int baud) const {
  return options_.paced && baud > 0 ? TimePoint{std::chrono::seconds{bits_per_byte}} / baud : TimePoint{0};
}

void Line::tell(const Event& event) const {
  if (observer_) {
    observer_(event);
  }
}

}  // namespace readersim
