#include "simulator/bench.h"

#include "simulator/fabricate.h"

#include <algorithm>

namespace readersim {

Bench::Bench(const Options& options, std::string_view script, Console::Hooks hooks)
    : line_(options.line), console_(line_, options.line.seed, std::move(hooks)), script_(script) {
  if (options.network.empty()) {
    line_.add(options.family.value_or(Family::orin), 0, false);
  }
  for (std::size_t i = 0; i < options.network.size(); ++i) {
    line_.add(options.family.value_or(all_families.at(i % all_families.size())), options.network[i], true);
  }
  for (const auto& seat : line_.seats()) {
    seat->reader.format.baud = options.baud;
    if (options.clock) {
      (void)seat->reader.clock.set(*options.clock, TimePoint{0});
    }
  }
  if (options.demo) {
    make_demonstration(line_, TimePoint{0});
  }
}

std::optional<TimePoint> Bench::next_due() const {
  const auto line = line_.next_due();
  const auto script = script_.next_due();
  return line && script ? std::min(line, script) : (line ? line : script);
}

}  // namespace readersim
