#pragma once

#include <unistd.h>
#include <utility>

namespace readersim {

/// An open file that closes with the object; -1 is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor(Descriptor&&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) {
      ::close(number_);
    }
  }
  [[nodiscard]] int get() const { return number_; }

 private:
  int number_ = -1;
};

}  // namespace readersim
