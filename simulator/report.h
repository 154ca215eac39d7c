#pragma once

#include "simulator/line.h"

#include <string>

namespace readersim {

/// One line about a reader, for a list of them all.
[[nodiscard]] std::string summary(const Seat& seat, TimePoint now);
/// Everything about a reader, a line for each thing: "name: value".
[[nodiscard]] std::string report(const Seat& seat, TimePoint now);
/// "9600 8N", "1200 7E".
[[nodiscard]] std::string describe(const LineFormat& format);
/// "off", "on", "blinking".
[[nodiscard]] std::string_view describe(Lamp::State state);

}  // namespace readersim
