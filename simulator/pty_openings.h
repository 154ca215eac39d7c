#pragma once

#include "simulator/pty_descriptor.h"

#include <string>

namespace readersim {

/// Counts how many programs have a device open, where the platform tells.
class Openings {
 public:
  /// Counts from now on, and from none, who opens and closes the device of that path.
  void watch(const std::string& path);
  void stop();
  /// Whether the platform tells. Where it does not, count() says nothing.
  [[nodiscard]] bool counted() const { return counted_; }
  [[nodiscard]] int count() const { return count_; }
  /// Becomes readable when there is something to look() at; -1 when nothing ever is.
  [[nodiscard]] int descriptor() const { return watch_.get(); }
  /// Counts what was opened and closed since the last call. False when nothing was.
  bool look();
  /// Somebody has been heard: whoever opened the device before the watch could tell counts as one.
  void heard_somebody();

 private:
  Descriptor watch_;
  bool counted_ = false;
  int count_ = 0;
};

}  // namespace readersim
