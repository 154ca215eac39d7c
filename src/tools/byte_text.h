#pragma once

#include "tools/terminal_receiver.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

/// Lines of bytes as a terminal shows them, kept beside any widget so that every byte value survives. A
/// character is named by its offset in the whole text, where a line break counts as one; appending costs
/// the same however long the text or its last line is.
class ByteText {
 public:
  struct Place {
    int line = 0;
    int column = 0;  ///< the line's length: its end
    bool operator==(const Place&) const = default;
  };

  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
  [[nodiscard]] int line_count() const { return static_cast<int>(lines_.size()); }
  [[nodiscard]] int length_of(int line) const { return static_cast<int>(at(line).size()); }
  /// The length of the longest line there has been since clear().
  [[nodiscard]] int longest() const { return longest_; }
  /// In characters.
  [[nodiscard]] int size() const { return line_start(line_count() - 1) + length_of(line_count() - 1); }

  /// @param offset is held at the ends of the text
  [[nodiscard]] Place place_of(int offset) const;
  [[nodiscard]] int offset_of(Place place) const { return line_start(place.line) + place.column; }
  [[nodiscard]] int line_start(int line) const { return starts_[static_cast<std::size_t>(line)]; }

  /// The characters from one offset to another as the terminals draw them, lines separated by LF.
  [[nodiscard]] QString text(int begin, int end) const;
  [[nodiscard]] QString text() const { return text(0, size()); }

  void append(const ReceivedLines& more);
  void insert(int offset, std::string_view bytes);
  void break_line(int offset);
  void erase(int begin, int end);
  void clear();

 private:
  [[nodiscard]] const std::string& at(int line) const { return lines_[static_cast<std::size_t>(line)]; }
  [[nodiscard]] std::string& at(int line) { return lines_[static_cast<std::size_t>(line)]; }
  void changed_from(int line);

  std::vector<std::string> lines_ = std::vector<std::string>(1);
  std::vector<int> starts_ = std::vector<int>(1);  ///< the offset of each line's first character
  int longest_ = 0;
};
