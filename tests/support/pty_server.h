#pragma once

#include "simulator/server.h"

#include <array>
#include <atomic>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace readersim {

/// A bench on a pseudo-terminal that serves itself in a thread of its own, for tests of programs that
/// talk to readers. It stops and goes away with the object. Throws std::system_error where there is
/// no pseudo-terminal.
class PtyServer {
 public:
  explicit PtyServer(const Options& options);
  /// One reader on a plain line, answering without delay.
  explicit PtyServer(Family family);
  ~PtyServer();
  PtyServer(const PtyServer&) = delete;
  PtyServer& operator=(const PtyServer&) = delete;

  /// The device to open; another one after each replug(), "" while hung up.
  [[nodiscard]] std::string path() { return server_.path(); }
  /// Obeys a console command ("fault 5 drop-ack 3", "swipe 0 4711") and returns what it says.
  std::string console(std::string_view line);
  /// A copy of the reader at that address as it is now, throws Mistake when there is none.
  [[nodiscard]] Reader reader(int address);
  /// One line of what "show ADDRESS" says, for example value(5, "baud"); throws Mistake.
  [[nodiscard]] std::string value(int address, std::string_view name);
  /// Calls look(Line&, TimePoint now) while nothing else touches the line.
  template <typename Look>
  auto with_line(Look look) {
    const Wake wake{*this};
    return server_.with_line(std::move(look));
  }
  /// Everything heard, sent and noted so far, the newest 20,000 at least.
  [[nodiscard]] std::vector<Event> events() { return server_.events(); }
  /// All bytes that came from the program so far, noise and acknowledges included.
  [[nodiscard]] std::string received();
  /// The line goes dead as when an adapter is unplugged; back again on a new path().
  void hang_up() { console("hangup"); }
  void replug() { console("replug"); }

 private:
  /// Makes the thread look again when it goes: something may be due sooner now.
  struct Wake {
    PtyServer& server;
    explicit Wake(PtyServer& of) : server(of) {}
    Wake(const Wake&) = delete;
    Wake& operator=(const Wake&) = delete;
    ~Wake() { server.wake(); }
  };

  void run();
  void wake();

  Server server_;
  std::array<int, 2> wake_{-1, -1};
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

}  // namespace readersim
