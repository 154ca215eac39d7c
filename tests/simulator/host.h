#pragma once

#include "simulator/bench.h"
#include "support/bytes.h"

#include <string>
#include <string_view>
#include <vector>

using namespace std::chrono_literals;

/// The host's end of a simulated line, at virtual time.
class Host {
 public:
  explicit Host(readersim::Line::Options options = {}) : line{options} {
    line.set_observer([this](const readersim::Event& event) { events.push_back(event); });
  }

  /// Sends bytes and takes what comes in the second after.
  std::string exchange(std::string_view bytes) {
    line.receive(bytes, now);
    now += 1s;
    return line.take_bytes(now);
  }
  /// The same with a command in the frame of the network.
  std::string ask(int address, std::string_view command) { return exchange(frame(address, command)); }
  std::string tell(std::string_view command) { return exchange(std::string{command} + "\r"); }

  static std::string frame(int address, std::string_view command) {
    std::string bytes(1, static_cast<char>(address + 0x80));
    return bytes.append("\x02").append(command).append("\x03");
  }
  /// The data of a network reply, without its frame; "?" and the bytes when it is none.
  static std::string data(const std::string& reply) {
    const bool framed = reply.size() >= 3 && reply.starts_with("\x06\x02") && reply.ends_with("\x03");
    return framed ? reply.substr(2, reply.size() - 3) : "?" + reply;
  }

  readersim::Line line;
  readersim::TimePoint now{1s};
  std::vector<readersim::Event> events;
};

/// A command text that begins with the introducer.
inline std::string nul(std::string_view letters) {
  return std::string(1, '\0').append(letters);
}
