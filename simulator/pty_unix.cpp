#include "simulator/pty.h"
#include "simulator/pty_descriptor.h"
#include "simulator/pty_openings.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace readersim {
namespace {

// What a program that does not read may leave unread before bytes are lost, as in an overrun.
constexpr std::size_t most_left_over = 65536;

[[noreturn]] void fail(const char* what) {
  throw std::system_error{errno, std::generic_category(), what};
}

bool is_link(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool exists(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

std::string target(const std::string& link) {
  std::array<char, 4096> text{};
  const ssize_t length = ::readlink(link.c_str(), text.data(), text.size());
  return length < 0 ? std::string{} : std::string{text.data(), static_cast<std::size_t>(length)};
}

}  // namespace

struct PseudoTerminal::Parts {
  std::string link;
  std::string path;
  Descriptor master;
  Descriptor slave;  // held open so that the line outlives a program that closes its end
  Openings openings;
  std::string left_over;

  void open();
  void place_link() const;
  bool flush();
};

void PseudoTerminal::Parts::open() {
  master = Descriptor{::posix_openpt(O_RDWR | O_NOCTTY)};
  if (master.get() < 0 || ::grantpt(master.get()) != 0 || ::unlockpt(master.get()) != 0) {
    fail("no pseudo-terminal");
  }
  ::fcntl(master.get(), F_SETFL, O_NONBLOCK);
  ::fcntl(master.get(), F_SETFD, FD_CLOEXEC);
  path = ::ptsname(master.get());
  slave = Descriptor{::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)};
  termios settings{};
  if (slave.get() < 0 || ::tcgetattr(slave.get(), &settings) != 0) {
    fail("no pseudo-terminal");
  }
  ::cfmakeraw(&settings);
  // The speed of a program that sets none: a fresh pseudo-terminal's own is one no reader knows.
  ::cfsetspeed(&settings, B9600);
  ::tcsetattr(slave.get(), TCSANOW, &settings);
}

void PseudoTerminal::Parts::place_link() const {
  if (link.empty()) {
    return;
  }
  if (exists(link) && !is_link(link)) {
    errno = EEXIST;
    fail(link.c_str());
  }
  // Made aside and moved into place, so that the link is never missing while it changes.
  const std::string aside = link + ".new" + std::to_string(::getpid());
  ::unlink(aside.c_str());
  if (::symlink(path.c_str(), aside.c_str()) != 0 || ::rename(aside.c_str(), link.c_str()) != 0) {
    const int reason = errno;
    ::unlink(aside.c_str());
    errno = reason;
    fail(link.c_str());
  }
}

/// False when bytes are left over.
bool PseudoTerminal::Parts::flush() {
  while (!left_over.empty()) {
    const ssize_t written = ::write(master.get(), left_over.data(), left_over.size());
    if (written <= 0) {
      return false;
    }
    left_over.erase(0, static_cast<std::size_t>(written));
  }
  return true;
}

PseudoTerminal::PseudoTerminal(std::string link) : parts_(std::make_unique<Parts>()) {
  parts_->link = std::move(link);
  plug();
}

PseudoTerminal::~PseudoTerminal() {
  unplug();
}

void PseudoTerminal::plug() {
  if (plugged()) {
    return;
  }
  parts_->open();
  parts_->openings.watch(parts_->path);
  parts_->place_link();  // last: whoever waits for the link finds everything ready
}

void PseudoTerminal::unplug() {
  if (!plugged()) {
    return;
  }
  if (!parts_->link.empty() && target(parts_->link) == parts_->path) {
    ::unlink(parts_->link.c_str());
  }
  parts_->openings.stop();
  parts_->slave = Descriptor{};
  parts_->master = Descriptor{};
  parts_->path.clear();
  parts_->left_over.clear();
}

bool PseudoTerminal::plugged() const {
  return parts_->master.get() >= 0;
}

const std::string& PseudoTerminal::path() const {
  return parts_->path;
}

std::vector<int> PseudoTerminal::descriptors() const {
  std::vector<int> all;
  if (plugged()) {
    all.push_back(parts_->master.get());
  }
  if (plugged() && parts_->openings.descriptor() >= 0) {
    all.push_back(parts_->openings.descriptor());
  }
  return all;
}

std::optional<int> PseudoTerminal::stuffed() const {
  return plugged() && !parts_->left_over.empty() ? std::optional{parts_->master.get()} : std::nullopt;
}

std::string PseudoTerminal::read() {
  std::string bytes;
  std::array<char, 4096> some{};
  ssize_t count = 0;
  while (plugged() && (count = ::read(parts_->master.get(), some.data(), some.size())) > 0) {
    bytes.append(some.data(), static_cast<std::size_t>(count));
  }
  if (!bytes.empty()) {
    parts_->openings.heard_somebody();
  }
  return bytes;
}

void PseudoTerminal::write(std::string_view bytes) {
  const bool anybody = !parts_->openings.counted() || parts_->openings.count() > 0;
  if (plugged() && anybody && parts_->left_over.size() < most_left_over) {
    parts_->left_over += bytes;
  }
  parts_->flush();
}

std::string PseudoTerminal::notice() {
  if (!plugged() || !parts_->openings.look()) {
    return {};
  }
  if (parts_->openings.count() > 0) {
    return "a program has the line open";
  }
  // As a real port does for its last closing: what was not read is gone, and so is the claim of a
  // program that ended without giving it up.
  parts_->left_over.clear();
  ::tcflush(parts_->slave.get(), TCIFLUSH);
  ::ioctl(parts_->slave.get(), TIOCNXCL);
  return "no program has the line open";
}

int PseudoTerminal::host_baud() const {
  constexpr std::array<std::pair<speed_t, int>, 10> speeds{{{B300, 300},
                                                            {B600, 600},
                                                            {B1200, 1200},
                                                            {B2400, 2400},
                                                            {B4800, 4800},
                                                            {B9600, 9600},
                                                            {B19200, 19200},
                                                            {B38400, 38400},
                                                            {B57600, 57600},
                                                            {B115200, 115200}}};
  termios settings{};
  if (!plugged() || ::tcgetattr(parts_->slave.get(), &settings) != 0) {
    return 0;
  }
  for (const auto& [speed, baud] : speeds) {
    if (::cfgetospeed(&settings) == speed) {
      return baud;
    }
  }
  return 0;
}

}  // namespace readersim
