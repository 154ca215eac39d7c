#include "tools/terminal_receiver.h"

#include "link/frame.h"
#include "link/timings.h"
#include "tools/caret_code.h"

namespace {

/// The most that one tick shows, so that a flood leaves time for clicks: two seconds of the fastest line.
constexpr int most_bytes_a_tick = 4096;

constexpr int received_caret_offset = 48;

}  // namespace

void append_received(ReceivedLines& lines, char byte) {
  if (byte == wire::cr) {
    lines.emplace_back();
    return;
  }
  std::string& line = lines.back();
  if (byte == wire::nul) {
    line += "^@";
  }
  if (is_control(byte)) {
    line += '^';
    line += static_cast<char>(byte + received_caret_offset);
  }
  line += byte;
}

TerminalReceiver::TerminalReceiver(SerialPort& port, EventPump& pump)
    : port_(port), ticker_(pump.make_ticker(timings::terminal_tick, [this] { tick(); })) {
  port_.on_arrival = [this] { arrived(); };
}

TerminalReceiver::~TerminalReceiver() {
  port_.on_arrival = nullptr;
}

void TerminalReceiver::start(Display display) {
  display_ = std::move(display);
  running_ = true;
  arm_when_waiting();
}

void TerminalReceiver::stop() {
  running_ = false;
  ticker_->stop();
}

void TerminalReceiver::set_screenactive(bool active) {
  screenactive_ = active;
  arm_when_waiting();
}

void TerminalReceiver::arrived() {
  if (!screenactive_) {
    arm_when_waiting();
  } else if (full_screen_) {
    full_screen_();
  }
}

void TerminalReceiver::arm_when_waiting() {
  if (running_ && !screenactive_ && !ticker_->running() && port_.bytes_waiting() > 0) {
    ticker_->start();
  }
}

void TerminalReceiver::tick() {
  ticker_->stop();
  if (!running_ || screenactive_) {
    return;
  }
  ReceivedLines lines(1);
  for (int count = 0; count < most_bytes_a_tick; ++count) {
    const std::optional<char> byte = port_.read_char();
    if (!byte) {
      break;
    }
    append_received(lines, *byte);
  }
  if (lines.size() > 1 || !lines.front().empty()) {
    display_(lines);
  }
  arm_when_waiting();
}
