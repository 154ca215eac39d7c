#include "access/access_file.h"

#include "link/numbers.h"

namespace {

constexpr Columns id_columns = columns_of(AccessField::id);
constexpr Columns name_columns = columns_of(AccessField::name);
constexpr Columns schedule_columns = columns_of(AccessField::schedule);
constexpr std::size_t schedule_digits = schedule_columns.width;
constexpr std::size_t line_width = schedule_columns.first + schedule_columns.width - 1;

// All that stands before the schedule, padded with blanks and cut to its columns.
std::string before_schedule(std::string_view text) {
  return blank_padded(text.substr(0, schedule_columns.first - 1), schedule_columns.first - 1);
}

}  // namespace

AccessRow read_whole_line(std::string_view line) {
  return {std::string{cut_columns(line, id_columns)}, std::string{cut_columns(line, name_columns)},
          std::string{cut_columns(line, schedule_columns)}};
}

AccessRecord read_delimited_line(std::string_view line) {
  const std::string padded = blank_padded(delimited_field(line), line_width);
  return {std::string{cut_columns(padded, id_columns)}, numeric_value(cut_columns(padded, schedule_columns))};
}

std::string access_line(const AccessRow& row) {
  const std::string id = blank_padded(row.id.substr(0, id_columns.width), id_columns.width);
  return before_schedule(id + row.name) + with_leading_zeros(numeric_value(row.schedule), schedule_digits);
}

std::string uploaded_access_line(std::string_view record) {
  const auto schedule = static_cast<unsigned char>(record.back());
  record.remove_suffix(1);
  // A code of 100 or more takes three digits, and the line 73 characters; that is meant.
  return before_schedule(record) + with_leading_zeros(schedule, schedule_digits);
}
