#pragma once

#include "simulator/fault.h"
#include "simulator/line.h"

#include <cstddef>
#include <string>
#include <vector>

namespace readersim {

/// Records for a big upload, the same ones for the same random numbers. Among them are records with
/// commas, with bytes above 127, with `end` as their last character, and of exactly `longest`
/// characters; none is "END" and none holds a control character but that last one.
[[nodiscard]] std::vector<std::string> make_records(std::size_t count, std::size_t longest, char end,
                                                    Random& random);

/// Adds `count` access entries that are not in the list yet, their schedules going through 0 to 99.
void make_entries(Reader& reader, std::size_t count, Random& random);

/// Gives every reader on the line something to show: a clock, an access list with a schedule, a log,
/// collected records, a read that waits for a poll.
void make_demonstration(Line& line, TimePoint now);

}  // namespace readersim
