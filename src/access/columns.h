#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Fixed-width text: the columns of a line, counted from 1 as technicians count them.
struct Columns {
  std::size_t first;
  std::size_t width;
};

/// The characters of the line in these columns; fewer, or none, where the line ends before them.
[[nodiscard]] std::string_view cut_columns(std::string_view line, Columns columns);

/// `text` padded with blanks to `width`, never cut.
[[nodiscard]] std::string blank_padded(std::string_view text, std::size_t width);

/// Overwrites the columns character by character: a text shorter than the columns replaces only as many
/// characters as it has, a longer one is cut to them. A line that ends before the columns is padded first.
void store_in_columns(std::string& line, Columns columns, std::string_view text);

/// The numeric value of a column: its leading number. Blanks, letters or a negative number are 0, so that a
/// value always has its digits; nothing fails.
[[nodiscard]] int numeric_value(std::string_view text);

/// Hands out the lines of a text one by one. CR LF and a bare LF end a line, the last end may be missing.
class LineReader {
 public:
  explicit LineReader(std::string text) : text_{std::move(text)} {}
  /// The next line without its end, valid as long as the reader is; nothing at the end of the text.
  [[nodiscard]] std::optional<std::string_view> next_line();

 private:
  std::string text_;
  std::size_t position_ = 0;
};

/// What the delimited read of the downloads makes of a line: leading blanks are skipped, a comma ends the
/// field and the rest of the line is dropped; double quotes enclose it, and text after the closing quote is
/// dropped. A quote within a field is a character, trailing blanks stay.
[[nodiscard]] std::string_view delimited_field(std::string_view line);
