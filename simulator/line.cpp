#include "simulator/line.h"

#include "simulator/answer.h"

#include <algorithm>
#include <utility>

namespace readersim {
namespace {

constexpr int bits_per_byte = 10;  // a start bit, seven and parity or eight, a stop bit
constexpr int factory_baud = 9600;

void mask_to_seven(std::string& bytes, std::optional<DataFormat> format) {
  if (format && *format != DataFormat::eight_none) {
    for (char& byte : bytes) {
      byte = static_cast<char>(byte & 0x7F);
    }
  }
}

}  // namespace

Line::Line(Options options) : options_(options), random_(options.seed) {}

Seat& Line::add(Family family, int address, bool protocol_mode) {
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

void Line::receive(std::string_view bytes, TimePoint now) {
  if (hung_up_) {
    return;
  }
  std::string heard_bytes{bytes};
  mask_to_seven(heard_bytes, host_data_);
  TimePoint at = std::max(now, host_free_at_);
  for (const char& byte : heard_bytes) {
    at += byte_time(host_baud_.value_or(factory_baud));
    // Both ears hear every byte, so that a reader that changes over hears the next frame whole. Who
    // listens is settled before either ear reports: the report may change it.
    const Listeners listeners = who_listens();
    for (const Heard& heard : network_ear_.hear({&byte, 1})) {
      handle_network(heard, listeners, at);
    }
    for (const Heard& heard : plain_ear_.hear({&byte, 1})) {
      handle_plain(heard, listeners, at);
    }
  }
  host_free_at_ = at;
}

void Line::handle_network(const Heard& heard, Listeners listeners, TimePoint now) {
  // Where there are plain readers too, what is no frame is theirs to hear and to report.
  if (heard.kind == Heard::Kind::command && (listeners.network || !listeners.plain)) {
    handle_command(heard, true, now);
  } else if (heard.kind == Heard::Kind::acknowledge && listeners.network) {
    handle_acknowledge(heard, now);
  } else if (heard.kind == Heard::Kind::noise && listeners.network && !listeners.plain) {
    tell({now, Event::Kind::heard, Event::nobody, heard.bytes, "noise"});
  }
}

void Line::handle_plain(const Heard& heard, Listeners listeners, TimePoint now) {
  if (!listeners.plain) {
    return;
  }
  if (heard.kind == Heard::Kind::command) {
    handle_command(heard, false, now);
  } else if (heard.kind == Heard::Kind::noise) {
    tell({now, Event::Kind::heard, Event::nobody, heard.bytes, "noise"});
  } else if (heard.kind == Heard::Kind::acknowledge && !listeners.network) {
    handle_acknowledge(heard, now);
  } else if (heard.kind == Heard::Kind::foreign && !listeners.network) {
    tell({now, Event::Kind::heard, heard.address, heard.bytes, "no reader here is in protocol mode"});
  }
}

void Line::handle_acknowledge(const Heard& heard, TimePoint now) {
  int address = Event::nobody;
  if (spoken_to_ != nullptr) {
    host_acknowledged(spoken_to_->reader);
    address = spoken_to_->reader.address;
  }
  tell({now, Event::Kind::heard, address, heard.bytes, "the host acknowledges"});
}

void Line::handle_command(const Heard& heard, bool network, TimePoint now) {
  if (spoken_to_ != nullptr) {
    host_moved_on(spoken_to_->reader);
    spoken_to_ = nullptr;
  }
  const bool global = network && heard.address == Event::everybody;
  Event event{now, Event::Kind::heard, heard.address, heard.bytes, ""};
  std::vector<std::pair<Seat*, Answer>> answers;
  int obeying = 0;
  for (const auto& seat : seats_) {
    if (!addressed(*seat, heard, network)) {
      continue;
    }
    const Verdict verdict = obey(seat->reader, heard.text, now);
    obeying += verdict.kind == Verdict::Kind::refused ? 0 : 1;
    if (!global) {
      spoken_to_ = seat.get();
      event.address = seat->reader.address;
      Answer answer = answer_for(seat->reader, verdict, network);
      if (!answer.bytes.empty()) {
        answers.emplace_back(seat.get(), std::move(answer));
      }
    }
    event.meaning = verdict.meaning;
  }
  if (event.meaning.empty()) {
    event.meaning = any_deaf(network) ? "no reader hears this, at this speed or address" : "no such reader";
  } else if (global) {
    event.meaning += ", " + std::to_string(obeying) + " obey";
  }
  tell(event);
  answer_all(answers, now + options_.answer_delay);
}

void Line::answer_all(std::vector<std::pair<Seat*, Answer>>& answers, TimePoint earliest) {
  std::vector<Answer> spoilt;
  for (auto& [seat, answer] : answers) {
    if (const std::string done = spoil(answer, seat->faults, random_); !done.empty()) {
      answer.meaning += " [" + done + "]";
    }
    spoilt.push_back(std::move(answer));
  }
  if (!spoilt.empty()) {
    send(*answers.front().first, spoilt.size() == 1 ? spoilt.front() : collide(spoilt), earliest);
  }
}

bool Line::addressed(Seat& seat, const Heard& heard, bool network) const {
  if (!seat.present || seat.reader.protocol_mode != network || !understands(seat.reader)) {
    return false;
  }
  if (!network || heard.address == Event::everybody) {
    return true;
  }
  const auto fault = std::find_if(seat.faults.begin(), seat.faults.end(),
                                  [](const Fault& each) { return each.kind == Fault::Kind::mishear; });
  if (fault == seat.faults.end()) {
    return heard.address == seat.reader.address;
  }
  if (heard.address != fault->n) {
    return false;
  }
  fault->times -= fault->times > 0 ? 1 : 0;
  if (fault->times == 0) {
    seat.faults.erase(fault);
  }
  return true;
}

bool Line::understands(const Reader& reader) const {
  return host_baud_.value_or(reader.format.baud) == reader.format.baud &&
         host_data_.value_or(reader.format.data) == reader.format.data;
}

bool Line::any_deaf(bool network) const {
  return std::any_of(seats_.begin(), seats_.end(), [&](const auto& seat) {
    return seat->reader.protocol_mode == network && !understands(seat->reader);
  });
}

Line::Listeners Line::who_listens() const {
  Listeners listeners;
  for (const auto& seat : seats_) {
    (seat->reader.protocol_mode ? listeners.network : listeners.plain) = true;
  }
  return listeners;
}

void Line::send(Seat& seat, const Answer& answer, TimePoint earliest) {
  TimePoint at = std::max(earliest, seat.free_at);
  std::string sent;
  Output output;
  for (std::size_t i = 0; i < answer.bytes.size() && answer.hang_up_before.value_or(i + 1) > i; ++i) {
    const TimePoint before = answer.bytes[i].silence + byte_time(seat.reader.format.baud);
    if (before > TimePoint{0} && !output.bytes.empty()) {
      put({std::exchange(output, {}), {}});
    }
    at += before;
    output.at = at;
    output.bytes += answer.bytes[i].byte;
    sent += answer.bytes[i].byte;
  }
  mask_to_seven(output.bytes, host_data_);
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
  note("card \"" + std::string{card} + "\" " + result.meaning, now, seat.reader.address);
  if (result.unsolicited.empty() || hung_up_) {
    return result;
  }
  Answer answer;
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

TimePoint Line::byte_time(int baud) const {
  return options_.paced ? TimePoint{std::chrono::seconds{bits_per_byte}} / baud : TimePoint{0};
}

void Line::tell(const Event& event) const {
  if (observer_) {
    observer_(event);
  }
}

}  // namespace readersim
