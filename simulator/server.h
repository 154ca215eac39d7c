#pragma once

#include "simulator/bench.h"
#include "simulator/pty.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// Joins a bench to a pseudo-terminal and to the time of day, one round at a time. Its functions may
/// be called from any thread; round() from one only.
class Server {
 public:
  /// `print` gets each line about what happens, without its line end; it is called under the lock.
  Server(const Options& options, std::string_view script, std::function<void(const std::string&)> print);

  [[nodiscard]] std::string path();
  /// Obeys a console command and returns what there is to say to it.
  std::string console(std::string_view line);
  /// Looks at the line, or changes it, at rest: nothing else touches it meanwhile.
  template <typename Look>
  auto with_line(Look look) {
    const std::lock_guard lock{mutex_};
    return look(bench_.line(), now());
  }
  /// Bench time: since the server was made.
  [[nodiscard]] TimePoint now() const;
  /// Waits until the program, a reader, the script or one of the other descriptors has something, at
  /// most that long, and deals with it. Returns the others that are readable or at their end.
  std::vector<int> round(const std::vector<int>& others, std::chrono::milliseconds longest);
  /// Whether "quit" was given.
  [[nodiscard]] bool quit();
  /// Everything that happened since the start, the newest 20,000 at least.
  [[nodiscard]] std::vector<Event> events();

 private:
  struct Waiting;
  [[nodiscard]] Waiting waiting(const std::vector<int>& others, std::chrono::milliseconds longest);
  void serve();
  void follow_line();
  void keep(const Event& event);

  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::chrono::system_clock::time_point started_ = std::chrono::system_clock::now();
  std::mutex mutex_;
  std::function<void(const std::string&)> print_;
  bool quiet_;
  bool quit_ = false;
  std::vector<Event> events_;
  Bench bench_;
  PseudoTerminal terminal_;
};

/// The time of day as readers take it, YYMMDDhhmmssD in local time.
[[nodiscard]] std::string local_clock(std::chrono::system_clock::time_point time);

}  // namespace readersim
