#pragma once

#include "simulator/line.h"
#include "support/fake_port.h"

/// Simulated readers at the other end of the fake port, at the test's virtual time: what the program
/// writes is heard by the line, and what its readers answer arrives at the port when it is due.
class ReaderWire {
 public:
  explicit ReaderWire(TestPump& pump, FakePort& port, readersim::Line::Options options = {})
      : line{options}, pump_(pump), port_(port) {
    port_.responder = [this](std::string_view written) {
      line.receive(written, now());
      deliver();
    };
  }
  ~ReaderWire() { port_.responder = nullptr; }
  ReaderWire(const ReaderWire&) = delete;
  ReaderWire& operator=(const ReaderWire&) = delete;

  /// Bench time: the pump's.
  [[nodiscard]] readersim::TimePoint now() const { return pump_.elapsed(); }
  /// Draws a card through the reader at that address; what it sends by itself arrives at the port.
  readersim::Swipe swipe(int address, std::string_view card) {
    readersim::Swipe result = line.swipe(*line.find(address), card, now());
    deliver();
    return result;
  }

  readersim::Line line;

 private:
  // Only what has been sent can come: all that is due, now or later, can be scheduled at once.
  void deliver() {
    const readersim::TimePoint start = now();
    for (const auto& output : line.take_due(readersim::TimePoint::max())) {
      const auto delay = std::chrono::ceil<std::chrono::milliseconds>(output.at - start);
      if (output.hang_up) {
        pump_.after(delay, [this] { port_.hang_up(); });
      } else {
        port_.arrive(output.bytes, delay);
      }
    }
  }

  TestPump& pump_;
  FakePort& port_;
};
