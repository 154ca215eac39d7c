#pragma once

#include "simulator/time_point.h"
#include "simulator/wire.h"

#include <string>

namespace readersim {

/// Something that happened on the line, for the protocol that people read.
struct Event {
  enum class Kind {
    heard,  ///< bytes from the host
    sent,   ///< bytes to the host
    note,   ///< anything else: a card, a hang-up
  };
  static constexpr int nobody = -1;
  static constexpr int everybody = readersim::everybody;

  TimePoint at{0};
  Kind kind = Kind::note;
  int address = nobody;  ///< the reader spoken to or speaking, 0 to 126
  std::string bytes;
  std::string meaning;
};

}  // namespace readersim
