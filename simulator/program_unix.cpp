#include "simulator/program.h"
#include "simulator/server.h"
#include "simulator/words.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace readersim {
namespace {

int signal_pipe = -1;  // the only thing a signal handler may touch

void on_signal(int) {
  (void)!::write(signal_pipe, "!", 1);
}

/// The end of a pipe that becomes readable when the program is asked to end.
int catch_signals() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) {
    throw Mistake("no pipe");
  }
  signal_pipe = ends[1];
  for (const int end : ends) {
    ::fcntl(end, F_SETFL, O_NONBLOCK);
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  struct sigaction action {};
  action.sa_handler = on_signal;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    ::sigaction(signal, &action, nullptr);
  }
  // Nobody reading what is printed, or a console that belongs to somebody else now, is no reason to end.
  action.sa_handler = SIG_IGN;
  for (const int signal : {SIGPIPE, SIGTTIN, SIGTTOU}) {
    ::sigaction(signal, &action, nullptr);
  }
  return ends[0];
}

std::string script_text(const std::string& file) {
  if (file.empty()) {
    return {};
  }
  std::ifstream stream{file, std::ios::binary};
  if (!stream) {
    throw Mistake("cannot read " + file);
  }
  return {std::istreambuf_iterator<char>{stream}, {}};
}

/// Standard input, line by line.
class Input {
 public:
  /// Reads what is there and hands on whole lines. False at the end.
  template <typename Obey>
  bool read(Obey obey) {
    std::array<char, 1024> some{};
    const ssize_t count = ::read(STDIN_FILENO, some.data(), some.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
      return true;
    }
    if (count <= 0) {
      return false;
    }
    pending_.append(some.data(), static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = pending_.find('\n')) != std::string::npos; pending_.erase(0, end + 1)) {
      obey(pending_.substr(0, end));
    }
    return true;
  }

 private:
  std::string pending_;
};

class Printer {
 public:
  explicit Printer(const std::string& name) : prefix_(name.empty() ? "" : name + "  ") {}
  /// Prints each line of the text behind the name.
  void operator()(std::string_view text) const {
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      std::printf("%s%.*s\n", prefix_.c_str(), static_cast<int>(end), text.data());
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    std::fflush(stdout);
  }

 private:
  std::string prefix_;
};

}  // namespace

int run_program(const Options& options) {
  const Printer print{options.name};
  const int asked_to_end = catch_signals();
  Server server{options, script_text(options.script), print};
  print(options.link.empty() ? server.path() : server.path() + " as " + options.link);
  std::vector<int> others{asked_to_end};
  if (options.console) {
    others.push_back(STDIN_FILENO);
  }
  Input input;
  while (!server.quit()) {
    for (const int ready : server.round(others, std::chrono::seconds{60})) {
      if (ready == asked_to_end) {
        return 0;
      }
      if (!input.read([&](const std::string& line) { print(server.console(line)); })) {
        others.pop_back();
      }
    }
  }
  return 0;
}

}  // namespace readersim
