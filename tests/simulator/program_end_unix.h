#pragma once

#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <termios.h>
#include <unistd.h>

/// A serial port opened with the platform's own calls, as any program does it.
class ProgramEnd {
 public:
  explicit ProgramEnd(const std::string& path)
      : descriptor_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
  ~ProgramEnd() { close(); }
  ProgramEnd(const ProgramEnd&) = delete;
  ProgramEnd& operator=(const ProgramEnd&) = delete;

  [[nodiscard]] bool is_open() const { return descriptor_ >= 0; }
  void close() {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
      descriptor_ = -1;
    }
  }
  void set_speed(speed_t speed) const {
    termios settings{};
    ::tcgetattr(descriptor_, &settings);
    ::cfsetspeed(&settings, speed);
    ::tcsetattr(descriptor_, TCSANOW, &settings);
  }
  void write(std::string_view bytes) const { (void)!::write(descriptor_, bytes.data(), bytes.size()); }
  /// Reads until that many bytes have come or the time is over.
  [[nodiscard]] std::string read(std::size_t count, std::chrono::milliseconds longest) const {
    const auto end = std::chrono::steady_clock::now() + longest;
    std::string bytes;
    std::array<char, 4096> some{};
    while (bytes.size() < count) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
      pollfd wait{descriptor_, POLLIN, 0};
      if (left.count() <= 0 || ::poll(&wait, 1, static_cast<int>(left.count())) <= 0) {
        break;
      }
      const ssize_t got = ::read(descriptor_, some.data(), std::min(some.size(), count - bytes.size()));
      if (got <= 0) {
        break;
      }
      bytes.append(some.data(), static_cast<std::size_t>(got));
    }
    return bytes;
  }
  /// Writes, then reads until nothing has come for a while or the reply is as long as expected.
  [[nodiscard]] std::string exchange(std::string_view bytes, std::size_t expected) const {
    write(bytes);
    return read(expected, std::chrono::seconds{2});
  }
  /// Whether the line has hung up, waiting for it at most that long.
  [[nodiscard]] bool hung_up(std::chrono::milliseconds longest) const {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (std::chrono::steady_clock::now() < end) {
      pollfd wait{descriptor_, POLLIN, 0};
      if (::poll(&wait, 1, 10) > 0 && (wait.revents & POLLHUP) != 0) {
        return true;
      }
    }
    return false;
  }

 private:
  int descriptor_;
};
