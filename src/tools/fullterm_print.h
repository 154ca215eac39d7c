#pragma once

#include "tools/terminal_printer.h"

#include <string_view>

class Dialogs;

/// What the full-screen terminal captured as it is printed: typed text bold, received text plain, in lines
/// of 80. The pairs of 0xFF between them are not printed.
[[nodiscard]] PrintJob print_job_of(std::string_view captured);

/// Prints it; where there is no printer, offers a PDF file instead. Shows what failed.
/// What is captured while somebody answers the boxes is not printed.
void print_captured(std::string_view captured, Printer& printer, Dialogs& dialogs);
