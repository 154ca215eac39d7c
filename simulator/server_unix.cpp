#include "simulator/server.h"
#include "simulator/trace.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <poll.h>

namespace readersim {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

constexpr std::size_t most_events = 40000;

Options with_clock(Options options, std::chrono::system_clock::time_point time) {
  if (!options.clock) {
    options.clock = local_clock(time);
  }
  return options;
}

std::tm local(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm parts{};
  ::localtime_r(&seconds, &parts);
  return parts;
}

}  // namespace

std::string local_clock(std::chrono::system_clock::time_point time) {
  const std::tm parts = local(time);
  std::array<char, 32> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%y%m%d%H%M%S%u", &parts);
  return {text.data(), length};
}

struct Server::Waiting {
  std::vector<pollfd> descriptors;  // the others first
  int timeout;
};

Server::Server(const Options& options, std::string_view script, std::function<void(const std::string&)> print)
    : print_(std::move(print)),
      quiet_(options.quiet),
      bench_(with_clock(options, started_), script, {[this] { quit_ = true; }}),
      terminal_(options.link) {
  bench_.line().set_observer([this](const Event& event) { keep(event); });
}

std::string Server::path() {
  const std::lock_guard lock{mutex_};
  return terminal_.path();
}

bool Server::quit() {
  const std::lock_guard lock{mutex_};
  return quit_;
}

std::vector<Event> Server::events() {
  const std::lock_guard lock{mutex_};
  return events_;
}

TimePoint Server::now() const {
  return duration_cast<TimePoint>(std::chrono::steady_clock::now() - start_);
}

std::string Server::console(std::string_view line) {
  const std::lock_guard lock{mutex_};
  std::string said = bench_.obey(line, now());
  follow_line();
  return said;
}

Server::Waiting Server::waiting(const std::vector<int>& others, milliseconds longest) {
  const std::lock_guard lock{mutex_};
  Waiting result{{}, static_cast<int>(longest.count())};
  if (const auto due = bench_.next_due()) {
    const auto left = std::chrono::ceil<milliseconds>(std::max(*due - now(), TimePoint{0}));
    result.timeout = static_cast<int>(std::min(left, longest).count());
  }
  for (const int other : others) {
    result.descriptors.push_back({other, POLLIN, 0});
  }
  for (const int own : terminal_.descriptors()) {
    result.descriptors.push_back({own, POLLIN, 0});
  }
  if (const auto stuffed = terminal_.stuffed()) {
    result.descriptors.push_back({*stuffed, POLLOUT, 0});
  }
  return result;
}

std::vector<int> Server::round(const std::vector<int>& others, milliseconds longest) {
  Waiting wait = waiting(others, longest);
  std::vector<int> ready;
  if (::poll(wait.descriptors.data(), static_cast<nfds_t>(wait.descriptors.size()), wait.timeout) > 0) {
    for (std::size_t i = 0; i < others.size(); ++i) {
      if (wait.descriptors[i].revents != 0) {
        ready.push_back(others[i]);
      }
    }
  }
  const std::lock_guard lock{mutex_};
  serve();
  return ready;
}

void Server::serve() {
  Line& line = bench_.line();
  if (const std::string noticed = terminal_.notice(); !noticed.empty()) {
    line.note(noticed, now());
  }
  const std::string bytes = terminal_.read();
  line.set_host_baud(terminal_.plugged() ? std::optional{terminal_.host_baud()} : std::nullopt);
  line.receive(bytes, now());
  if (const std::string said = bench_.run_script(now()); !said.empty()) {
    print_(said.substr(0, said.size() - 1));
  }
  for (const Line::Output& output : line.take_due(now())) {
    terminal_.write(output.bytes);
  }
  terminal_.write({});  // what was left over
  follow_line();
}

void Server::follow_line() {
  if (bench_.line().hung_up() && terminal_.plugged()) {
    terminal_.unplug();
  } else if (!bench_.line().hung_up() && !terminal_.plugged()) {
    terminal_.plug();
    bench_.line().note("plugged in as " + terminal_.path(), now());
  }
}

void Server::keep(const Event& event) {
  if (events_.size() >= most_events) {
    events_.erase(events_.begin(), events_.begin() + most_events / 2);
  }
  events_.push_back(event);
  if (quiet_) {
    return;
  }
  const auto time = started_ + event.at;
  const std::tm parts = local(std::chrono::time_point_cast<std::chrono::system_clock::duration>(time));
  const auto thousandths = duration_cast<milliseconds>(time.time_since_epoch()).count() % 1000;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d  ", parts.tm_hour, parts.tm_min, parts.tm_sec,
                static_cast<int>(thousandths));
  print_(text.data() + describe(event));
}

}  // namespace readersim
