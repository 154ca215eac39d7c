#include "simulator/program.h"
#include "simulator/server.h"
#include "simulator/words.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

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

/// A place where commands come from, line by line.
class Input {
 public:
  explicit Input(int descriptor) : descriptor_(descriptor) {}
  [[nodiscard]] int descriptor() const { return descriptor_; }
  /// Reads what is there and hands on whole lines. False at the end.
  template <typename Obey>
  bool read(Obey obey) {
    std::array<char, 1024> some{};
    const ssize_t count = ::read(descriptor_, some.data(), some.size());
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
  int descriptor_;
  std::string pending_;
};

/// A named pipe that others write commands to; it goes away with the object.
class Control {
 public:
  explicit Control(std::string path) : path_(std::move(path)) {
    if (path_.empty()) {
      return;
    }
    if (::mkfifo(path_.c_str(), S_IRUSR | S_IWUSR) != 0) {
      throw std::system_error{errno, std::generic_category(), path_};
    }
    // Open for writing too, so that it does not end when one writer has gone and the next is to come.
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  }
  ~Control() {
    if (!path_.empty()) {
      ::close(descriptor_);
      ::unlink(path_.c_str());
    }
  }
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  /// -1 when there is none.
  [[nodiscard]] int descriptor() const { return descriptor_; }

 private:
  std::string path_;
  int descriptor_ = -1;
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
  const Control control{options.control};
  Server server{options, script_text(options.script), print};
  print(options.link.empty() ? server.path() : server.path() + " as " + options.link);
  std::vector<Input> inputs;
  if (options.console) {
    inputs.emplace_back(STDIN_FILENO);
  }
  if (control.descriptor() >= 0) {
    inputs.emplace_back(control.descriptor());
  }
  while (!server.quit()) {
    std::vector<int> others{asked_to_end};
    for (const Input& input : inputs) {
      others.push_back(input.descriptor());
    }
    for (const int ready : server.round(others, std::chrono::seconds{60})) {
      if (ready == asked_to_end) {
        return 0;
      }
      // The end of an input is not the end of the program.
      std::erase_if(inputs, [&](Input& input) {
        return input.descriptor() == ready &&
               !input.read([&](const std::string& line) { print(server.console(line)); });
      });
    }
  }
  return 0;
}

}  // namespace readersim
