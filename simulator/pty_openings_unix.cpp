#include "simulator/pty_openings.h"

#include <algorithm>
#ifdef __linux__
#include <array>
#include <sys/inotify.h>
#endif

namespace readersim {

void Openings::stop() {
  watch_ = Descriptor{};
}

void Openings::heard_somebody() {
  count_ = std::max(count_, 1);
}

#ifdef __linux__

void Openings::watch(const std::string& path) {
  count_ = 0;
  watch_ = Descriptor{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
  counted_ = watch_.get() >= 0 && ::inotify_add_watch(watch_.get(), path.c_str(), IN_OPEN | IN_CLOSE) >= 0;
}

bool Openings::look() {
  bool any = false;
  alignas(inotify_event) std::array<char, 4096> buffer{};
  ssize_t length = 0;
  while ((length = ::read(watch_.get(), buffer.data(), buffer.size())) > 0) {
    // The watch is on one file, so that no name follows an event: all have the same size.
    const auto* events = reinterpret_cast<const inotify_event*>(buffer.data());
    for (ssize_t i = 0; i < length / static_cast<ssize_t>(sizeof(inotify_event)); ++i) {
      count_ = std::max(0, count_ + ((events[i].mask & IN_OPEN) != 0 ? 1 : -1));
      any = true;
    }
  }
  return any;
}

#else

void Openings::watch(const std::string&) {
  count_ = 0;
}

bool Openings::look() {
  return false;
}

#endif

}  // namespace readersim
