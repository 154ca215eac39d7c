#pragma once

#include "simulator/line.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// Looks at the readers of a line and changes them, one line of text at a time: what somebody at the
/// bench can do with their hands, and what a script does for them.
class Console {
 public:
  /// What the console asks of whoever drives the line; each may be left empty.
  struct Hooks {
    std::function<void()> quit;
  };

  Console(Line& line, std::uint32_t seed) : Console(line, seed, Hooks{}) {}
  Console(Line& line, std::uint32_t seed, Hooks hooks);

  /// Obeys one line. Returns what there is to say, lines ended by '\n', "" when there is nothing;
  /// a mistake is answered with a text that begins with "? ".
  [[nodiscard]] std::string obey(std::string_view line, TimePoint now);
  /// Every command in one line each, and the faults.
  [[nodiscard]] static std::string help();

 private:
  using Words = std::vector<std::string>;
  struct Entry;
  [[nodiscard]] static const std::vector<Entry>& entries();
  /// The readers meant by an address or "all"; throws Mistake when there are none.
  [[nodiscard]] std::vector<Seat*> seats(const Words& words) const;

  std::string show(const Words& words, TimePoint now);
  std::string set(const Words& words, TimePoint now);
  std::string swipe(const Words& words, TimePoint now);
  std::string fault(const Words& words, TimePoint now);
  std::string faults(const Words& words, TimePoint now);
  std::string present(const Words& words, TimePoint now);
  std::string answer(const Words& words, TimePoint now);
  std::string grant(const Words& words, TimePoint now);
  std::string enrol(const Words& words, TimePoint now);
  std::string list(const Words& words, TimePoint now);
  std::string schedule(const Words& words, TimePoint now);
  std::string log(const Words& words, TimePoint now);
  std::string fill(const Words& words, TimePoint now);
  std::string power(const Words& words, TimePoint now);
  std::string note(const Words& words, TimePoint now);
  std::string hang_up(const Words& words, TimePoint now);
  std::string replug(const Words& words, TimePoint now);
  std::string quit(const Words& words, TimePoint now);

  Line& line_;
  Random random_;
  Hooks hooks_;
};

}  // namespace readersim
