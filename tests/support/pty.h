#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <termios.h>
#include <thread>

/// A pseudo-terminal: the program opens device(), the test holds the far end of the line.
class Pty {
 public:
  Pty();
  ~Pty();
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  [[nodiscard]] const std::string& device() const { return device_; }

  void write(std::string_view bytes) const;
  /// Writes what the line takes within 10 ms. @return how many bytes that was.
  std::size_t write_some(std::string_view bytes) const;
  /// What the program has written and nobody read; waits up to `time` for `count` bytes.
  [[nodiscard]] std::string read(std::size_t count,
                                 std::chrono::milliseconds time = std::chrono::milliseconds(1000)) const;
  /// What is there without waiting.
  [[nodiscard]] std::string read_now() const {
    return read(static_cast<std::size_t>(-1), std::chrono::milliseconds(0));
  }
  /// How the program has set the line up.
  [[nodiscard]] termios settings() const;
  /// Fills the line until it takes no more, as a far end does that has stopped reading.
  void stall() const;
  /// The line goes away, as when an adapter is pulled out.
  void hang_up();

 private:
  friend class PtyStall;
  /// The program's own descriptor of the line.
  [[nodiscard]] int near_end() const;

  int far_end_ = -1;
  std::string device_;
};

/// Somebody at the far end, in a thread of its own: hands every piece that comes to `on_bytes`.
class PtyListener {
 public:
  PtyListener(const Pty& pty, std::function<void(std::string_view)> on_bytes);
  ~PtyListener();
  PtyListener(const PtyListener&) = delete;
  PtyListener& operator=(const PtyListener&) = delete;

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

/// Keeps a line full as long as it lives, also after the program has dropped what it could not send.
class PtyStall {
 public:
  explicit PtyStall(const Pty& pty);
  ~PtyStall();
  PtyStall(const PtyStall&) = delete;
  PtyStall& operator=(const PtyStall&) = delete;

 private:
  int near_end_;
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

/// Sets a variable of the environment as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(std::string name, const std::string& value);
  ~ScopedVariable();
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  std::string name_;
};

/// The processor time that the calling thread has used so far.
[[nodiscard]] std::chrono::microseconds processor_time();
