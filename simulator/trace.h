#pragma once

#include "simulator/event.h"

#include <string>
#include <string_view>

namespace readersim {

/// "85 02 56 03".
[[nodiscard]] std::string hex(std::string_view bytes);
/// The bytes with control characters as people name them: "<STX>V<ETX>", "<85>" for 0x80 and above.
[[nodiscard]] std::string visible(std::string_view bytes);
/// One line for people, without a line end and without the time, for example
/// "pc > 005  85 02 56 03  <85><STX>V<ETX>  identification".
[[nodiscard]] std::string describe(const Event& event);

}  // namespace readersim
