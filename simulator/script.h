#pragma once

#include "simulator/console.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// Console commands that run by themselves. Besides the console's own there are "wait 2.5" (seconds)
/// and "repeat", which starts again from the top; a line that begins with '#' is a remark.
class Script {
 public:
  Script() = default;
  explicit Script(std::string_view text);

  /// When the next line is due; nothing when the script has ended.
  [[nodiscard]] std::optional<TimePoint> next_due() const;
  /// Runs every line that is due at `now`. Returns what the console had to say.
  [[nodiscard]] std::string run(Console& console, TimePoint now);

 private:
  [[nodiscard]] std::string run_line(Console& console, const std::string& line, TimePoint now);

  std::vector<std::string> lines_;
  std::size_t next_ = 0;
  TimePoint due_{0};
  bool waited_ = false;  // since the top: a script that repeats without waiting would never give way
};

}  // namespace readersim
