#include "simulator/script.h"

#include "simulator/words.h"

#include <algorithm>
#include <cstdlib>

namespace readersim {
namespace {

constexpr double longest_wait = 86400;  // a day

TimePoint seconds(const std::string& word) {
  char* end = nullptr;
  const double value = std::strtod(word.c_str(), &end);
  if (end == word.c_str() || *end != '\0' || !(value >= 0 && value <= longest_wait)) {
    throw Mistake("\"" + word + "\" is no number of seconds");
  }
  return TimePoint{static_cast<TimePoint::rep>(value * 1e6)};
}

}  // namespace

Script::Script(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines_.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

std::optional<TimePoint> Script::next_due() const {
  return next_ < lines_.size() ? std::optional{due_} : std::nullopt;
}

std::string Script::run(Console& console, TimePoint now) {
  std::string said;
  while (next_ < lines_.size() && due_ <= now) {
    const std::string& line = lines_[next_++];
    try {
      said += run_line(console, line, now);
    } catch (const Mistake& mistake) {
      said += "? " + std::string{mistake.what()} + "\n";
    }
  }
  return said;
}

std::string Script::run_line(Console& console, const std::string& line, TimePoint now) {
  const std::vector<std::string> words = split(line);
  if (words.empty()) {
    return {};
  }
  if (words[0] == "wait" && words.size() == 2) {
    // From when this line was due, not from when it was run: the waits of a script add up exactly.
    due_ += seconds(words[1]);
    waited_ = waited_ || due_ > now;
    return {};
  }
  if (words[0] == "repeat") {
    if (!waited_) {
      next_ = lines_.size();
      throw Mistake("a script that repeats has to wait, it ends here");
    }
    next_ = 0;
    waited_ = false;
    return {};
  }
  return console.obey(line, now);
}

}  // namespace readersim
