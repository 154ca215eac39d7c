#pragma once

#include "simulator/options.h"

namespace readersim {

/// Serves until "quit", SIGINT, SIGTERM or SIGHUP. Prints to standard output, obeys standard input
/// unless told not to; its end does not end the program. Returns the exit code. Throws Mistake for a
/// script that cannot be read, std::system_error for a pseudo-terminal that cannot be had.
[[nodiscard]] int run_program(const Options& options);

}  // namespace readersim
