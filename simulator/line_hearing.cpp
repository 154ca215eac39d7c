// How a line hears: bytes to commands, commands to readers, verdicts to answers.

#include "simulator/answer.h"
#include "simulator/line.h"

#include <algorithm>
#include <utility>

namespace readersim {
namespace {

constexpr int factory_baud = 9600;

}  // namespace

void Line::receive(std::string_view bytes, TimePoint now) {
  if (hung_up_) {
    return;
  }
  TimePoint at = std::max(now, host_free_at_);
  for (const char sent : bytes) {
    const char byte = on_wire(sent);
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
    const int baud = seat->reader.format.baud;  // a reader told to move answers before it does
    const Verdict verdict = obey(seat->reader, heard.text, now);
    obeying += verdict.kind == Verdict::Kind::refused ? 0 : 1;
    if (!global) {
      spoken_to_ = seat.get();
      event.address = seat->reader.address;
      Answer answer = answer_for(seat->reader, verdict, network);
      answer.baud = baud;
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

}  // namespace readersim
