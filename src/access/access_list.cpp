#include "access/access_list.h"

#include "access/row_text.h"
#include "shell/code_page.h"
#include "shell/safe_file.h"

#include <algorithm>
#include <numeric>

namespace {

/// What a text is sorted by: its bytes in the file. A character that the file lacks comes after all others.
std::u16string sort_key(const QString& text) {
  std::u16string key;
  key.reserve(static_cast<std::size_t>(text.size()));
  for (const QChar character : text) {
    const std::optional<char> byte = code_page::to_windows_1252(character);
    key += byte ? static_cast<char16_t>(static_cast<unsigned char>(*byte)) : character.unicode();
  }
  return key;
}

}  // namespace

const QString& ListRow::text(AccessField field) const {
  switch (field) {
    case AccessField::name:
      return name;
    case AccessField::schedule:
      return schedule;
    case AccessField::id:
      break;
  }
  return id;
}

void AccessList::read(std::string file) {
  LineReader reader{std::move(file)};
  rows_.clear();
  while (const auto line = reader.next_line()) {
    const AccessRow row = read_whole_line(*line);
    rows_.push_back({code_page::from_windows_1252(row.id), code_page::from_windows_1252(row.name),
                     code_page::from_windows_1252(row.schedule)});
  }
}

std::string AccessList::write() const {
  std::string file;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const std::string number = "Row " + std::to_string(i + 1);
    const ListRow& row = rows_[i];
    file += access_line(
        {bytes_of_row(number, row.id), bytes_of_row(number, row.name), bytes_of_row(number, row.schedule)});
    file += line_end;
  }
  return file;
}

std::optional<std::size_t> AccessList::first_foreign_row() const {
  const auto foreign = [](const QString& text) { return !code_page::to_windows_1252(text); };
  const auto row = std::find_if(rows_.begin(), rows_.end(), [&foreign](const ListRow& each) {
    return foreign(each.id) || foreign(each.name) || foreign(each.schedule);
  });
  return row == rows_.end() ? std::nullopt : std::optional(static_cast<std::size_t>(row - rows_.begin()));
}

void AccessList::change(std::size_t row, const QString& id, const QString& schedule) {
  rows_.at(row).id = id;
  rows_.at(row).schedule = schedule;
}

void AccessList::remove(std::size_t row) {
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
}

std::vector<std::size_t> AccessList::sort(AccessField field, bool descending) {
  std::vector<std::u16string> keys;
  keys.reserve(rows_.size());
  for (const ListRow& row : rows_) {
    keys.push_back(sort_key(row.text(field)));
  }
  std::vector<std::size_t> order(rows_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return descending ? keys[right] < keys[left] : keys[left] < keys[right];
  });
  std::vector<ListRow> sorted;
  sorted.reserve(rows_.size());
  for (const std::size_t row : order) {
    sorted.push_back(std::move(rows_[row]));
  }
  rows_ = std::move(sorted);
  return order;
}
