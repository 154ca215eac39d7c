#pragma once

#include "access/columns.h"

#include <array>
#include <string>
#include <string_view>

// The access list file: one employee a line. Bytes stay bytes: what they show is the code page's affair.

enum class AccessField { id, name, schedule };

struct AccessColumn {
  AccessField field;
  Columns columns;
};

/// The layout that reading and writing share.
inline constexpr std::array access_columns{
    AccessColumn{AccessField::id, {1, 40}},
    AccessColumn{AccessField::name, {41, 30}},
    AccessColumn{AccessField::schedule, {71, 2}},
};

[[nodiscard]] constexpr Columns columns_of(AccessField field) {
  return access_columns[static_cast<std::size_t>(field)].columns;
}

/// A row of the editor's list. Read from a file, every field keeps its blank padding.
struct AccessRow {
  std::string id;
  std::string name;
  std::string schedule;

  bool operator==(const AccessRow&) const = default;
};

/// What a download sends of a line.
struct AccessRecord {
  std::string id;  // always 40 characters
  int schedule;    // 0 to 99; 0 where the columns are blank or no number

  bool operator==(const AccessRecord&) const = default;
};

/// The two ways to read a line differ, and are meant to: the editor takes the whole line as it stands, the
/// download takes it as one delimited field. So an ID with a comma, or a line that starts with blanks, shows
/// whole in the editor and reaches the reader cut or shifted.
[[nodiscard]] AccessRow read_whole_line(std::string_view line);
[[nodiscard]] AccessRecord read_delimited_line(std::string_view line);

/// The line of an editor's row, without its end: ID padded or cut to 40, name to 30, and the numeric value of
/// the schedule in two digits.
[[nodiscard]] std::string access_line(const AccessRow& row);

/// The line of a record as a reader uploads it, without its end: the code of the record's last character
/// (0 to 255) is the schedule, what stands before it the ID; the name is blank. The record is not empty.
[[nodiscard]] std::string uploaded_access_line(std::string_view record);
