#pragma once

#include "simulator/console.h"
#include "simulator/line.h"
#include "simulator/options.h"
#include "simulator/script.h"

#include <optional>
#include <string>
#include <string_view>

namespace readersim {

/// A line with the readers that the options ask for, its console and its script; no clock, no port.
class Bench {
 public:
  /// `script` is the text of the script, not its file's name.
  Bench(const Options& options, std::string_view script, Console::Hooks hooks);
  explicit Bench(const Options& options) : Bench(options, {}, {}) {}

  [[nodiscard]] Line& line() { return line_; }
  [[nodiscard]] std::string obey(std::string_view line, TimePoint now) { return console_.obey(line, now); }
  /// When the line or the script wants attention next.
  [[nodiscard]] std::optional<TimePoint> next_due() const;
  /// Runs what is due of the script; returns what it had to say.
  [[nodiscard]] std::string run_script(TimePoint now) { return script_.run(console_, now); }

 private:
  Line line_;
  Console console_;
  Script script_;
};

}  // namespace readersim
