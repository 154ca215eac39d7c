#include "access/schedule_file.h"

#include "link/numbers.h"
#include "shell/safe_file.h"

ScheduleTable::ScheduleTable() {
  for (int n = 1; n <= schedule_count; ++n) {
    line_to_store(n) = with_leading_zeros(n, ScheduleColumns::number.width) + " 00 " + std::string(56, '0');
  }
}

std::optional<ScheduleTable> ScheduleTable::read(std::string text) {
  LineReader reader{std::move(text)};
  ScheduleTable table;
  for (std::string& line : table.lines_) {
    const std::optional<std::string_view> next = reader.next_line();
    if (!next) {
      return std::nullopt;
    }
    line = *next;
  }
  return table;
}

std::string ScheduleTable::write() const {
  std::string text;
  for (const std::string& line : lines_) {
    text += line;
    text += line_end;
  }
  return text;
}

const std::string& ScheduleTable::line(int schedule) const {
  return lines_.at(static_cast<std::size_t>(schedule) - 1);
}

std::string& ScheduleTable::line_to_store(int schedule) {
  return lines_.at(static_cast<std::size_t>(schedule) - 1);
}

ScheduleTexts ScheduleTable::texts(int schedule) const {
  const std::string& line = this->line(schedule);
  ScheduleTexts texts;
  for (int d = 1; d <= days_in_week; ++d) {
    const auto i = static_cast<std::size_t>(d) - 1;
    texts.start[i] = cut_columns(line, ScheduleColumns::start_time(d));
    texts.end[i] = cut_columns(line, ScheduleColumns::end_time(d));
  }
  texts.associated = cut_columns(line, ScheduleColumns::associated);
  return texts;
}

void ScheduleTable::store(int schedule, const ScheduleTexts& texts) {
  std::string& line = line_to_store(schedule);
  for (int d = 1; d <= days_in_week; ++d) {
    const auto i = static_cast<std::size_t>(d) - 1;
    store_in_columns(line, ScheduleColumns::start_time(d), texts.start[i]);
    store_in_columns(line, ScheduleColumns::end_time(d), texts.end[i]);
  }
  const Columns associated = ScheduleColumns::associated;
  store_in_columns(line, associated, with_leading_zeros(numeric_value(texts.associated), 2));
}

ScheduleRecord read_delimited_schedule(std::string_view line) {
  const std::string padded = blank_padded(delimited_field(line), ScheduleColumns::line_width);
  ScheduleRecord record;
  record.schedule = "0" + std::string{cut_columns(padded, ScheduleColumns::number)};
  record.associated = "0" + std::string{cut_columns(padded, ScheduleColumns::associated)};
  for (int d = 1; d <= days_in_week; ++d) {
    record.days[static_cast<std::size_t>(d) - 1] = cut_columns(padded, ScheduleColumns::day(d));
  }
  return record;
}
