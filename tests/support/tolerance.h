#pragma once

/// How much longer than its pauses and replies a cycle of the program may take, in percent. The sanitizers'
/// own work, up to a millisecond and more a cycle, is not the program's.
#ifdef __SANITIZE_ADDRESS__
constexpr int percent_over = 2;
#else
constexpr int percent_over = 1;
#endif
