#include "support/pty_server.h"

#include "simulator/report.h"
#include "simulator/words.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace readersim {
namespace {

Options at_once(Family family) {
  Options options;
  options.family = family;
  options.line.answer_delay = std::chrono::milliseconds{0};
  return options;
}

}  // namespace

PtyServer::PtyServer(const Options& options) : server_(options, {}, [](const std::string&) {}) {
  if (::pipe(wake_.data()) != 0) {
    throw std::system_error{errno, std::generic_category(), "no pipe"};
  }
  for (const int end : wake_) {
    ::fcntl(end, F_SETFL, O_NONBLOCK);
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  thread_ = std::thread{[this] { run(); }};
}

PtyServer::PtyServer(Family family) : PtyServer(at_once(family)) {}

PtyServer::~PtyServer() {
  stop_ = true;
  wake();
  thread_.join();
  ::close(wake_[0]);
  ::close(wake_[1]);
}

void PtyServer::run() {
  std::array<char, 64> ignored{};
  while (!stop_) {
    for (const int ready : server_.round({wake_[0]}, std::chrono::seconds{10})) {
      while (::read(ready, ignored.data(), ignored.size()) > 0) {
      }
      // The bytes read just now may have asked for a look at what came after the last one.
      (void)server_.round({}, std::chrono::milliseconds{0});
    }
  }
}

void PtyServer::wake() {
  (void)!::write(wake_[1], "!", 1);
}

std::string PtyServer::console(std::string_view line) {
  const Wake wake{*this};
  return server_.console(line);
}

Reader PtyServer::reader(int address) {
  return server_.with_line([&](Line& line, TimePoint) {
    const Seat* seat = line.find(address);
    if (seat == nullptr) {
      throw Mistake("no reader has address " + std::to_string(address));
    }
    return seat->reader;
  });
}

std::string PtyServer::value(int address, std::string_view name) {
  const std::string text = server_.with_line([&](Line& line, TimePoint now) {
    const Seat* seat = line.find(address);
    return "\n" + (seat == nullptr ? std::string{} : report(*seat, now));
  });
  const std::string key = "\n" + std::string{name} + ": ";
  const std::size_t at = text.find(key);
  if (at == std::string::npos) {
    throw Mistake("the reader has no \"" + std::string{name} + '"');
  }
  const std::size_t from = at + key.size();
  return text.substr(from, text.find('\n', from) - from);
}

std::string PtyServer::received() {
  std::string bytes;
  for (const Event& event : server_.events()) {
    if (event.kind == Event::Kind::heard) {
      bytes += event.bytes;
    }
  }
  return bytes;
}

}  // namespace readersim
