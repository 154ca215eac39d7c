#include "support/pty.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

void fill(int near_end) {
  const std::string filling(1024, '.');
  while (::write(near_end, filling.data(), filling.size()) > 0) {
  }
}

}  // namespace

Pty::Pty() {
  int near_end = -1;
  std::array<char, 128> name{};
  if (openpty(&far_end_, &near_end, name.data(), nullptr, nullptr) != 0) {
    throw std::runtime_error("no pseudo-terminal");
  }
  // Raw from the start: what is written before the program opens the line must not be echoed.
  termios raw{};
  tcgetattr(near_end, &raw);
  cfmakeraw(&raw);
  tcsetattr(near_end, TCSANOW, &raw);
  device_ = name.data();
  ::close(near_end);
  fcntl(far_end_, F_SETFL, O_NONBLOCK);
}

Pty::~Pty() {
  hang_up();
}

void Pty::write(std::string_view bytes) const {
  const auto end = Clock::now() + 2s;
  while (!bytes.empty()) {
    if (Clock::now() > end) {
      throw std::runtime_error("the program does not take the bytes");
    }
    bytes.remove_prefix(write_some(bytes));
  }
}

std::size_t Pty::write_some(std::string_view bytes) const {
  pollfd room{far_end_, POLLOUT, 0};
  if (poll(&room, 1, 10) <= 0) {
    return 0;
  }
  const ssize_t count = ::write(far_end_, bytes.data(), bytes.size());
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::string Pty::read(std::size_t count, std::chrono::milliseconds time) const {
  std::string bytes;
  const auto end = Clock::now() + time;
  while (bytes.size() < count) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd waiting{far_end_, POLLIN, 0};
    if (poll(&waiting, 1, left > 0 ? static_cast<int>(left) : 0) <= 0) {
      break;
    }
    std::array<char, 4096> buffer{};
    const ssize_t got = ::read(far_end_, buffer.data(), std::min(buffer.size(), count - bytes.size()));
    if (got <= 0) {
      break;  // nobody has the near end open
    }
    bytes.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return bytes;
}

termios Pty::settings() const {
  termios now{};
  tcgetattr(far_end_, &now);
  return now;
}

int Pty::near_end() const {
  // Through the port's own descriptor: an open port keeps everybody but root from opening its device again.
  int near_end = -1;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (std::filesystem::read_symlink(entry.path(), gone) == device_) {
      near_end = std::stoi(entry.path().filename());
    }
  }
  if (near_end < 0) {
    throw std::logic_error("only an open line can stall");
  }
  return near_end;
}

void Pty::stall() const {
  fill(near_end());
}

void Pty::hang_up() {
  if (const int end = std::exchange(far_end_, -1); end >= 0) {
    ::close(end);
  }
}

PtyListener::PtyListener(const Pty& pty, std::function<void(std::string_view)> on_bytes)
    : thread_([this, &pty, action = std::move(on_bytes)] {
        while (!done_) {
          if (const std::string bytes = pty.read(1, 10ms); !bytes.empty()) {
            action(bytes + pty.read_now());
          }
        }
      }) {}

PtyListener::~PtyListener() {
  done_ = true;
  thread_.join();
}

PtyStall::PtyStall(const Pty& pty) : near_end_(dup(pty.near_end())) {
  fill(near_end_);
  thread_ = std::thread([this] {
    while (!done_) {
      std::this_thread::sleep_for(1ms);
      fill(near_end_);
    }
  });
}

PtyStall::~PtyStall() {
  done_ = true;
  thread_.join();
  ::close(near_end_);
}

ScopedVariable::ScopedVariable(std::string name, const std::string& value) : name_(std::move(name)) {
  setenv(name_.c_str(), value.c_str(), 1);
}

ScopedVariable::~ScopedVariable() {
  unsetenv(name_.c_str());
}

std::chrono::microseconds processor_time() {
  rusage usage{};
  getrusage(RUSAGE_THREAD, &usage);
  const auto time = [](const timeval& value) {
    return std::chrono::seconds(value.tv_sec) + std::chrono::microseconds(value.tv_usec);
  };
  return time(usage.ru_utime) + time(usage.ru_stime);
}
