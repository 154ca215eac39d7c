#pragma once

#include "access/access_file.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

/// One employee as the editor shows it, every text exactly as read or typed.
struct ListRow {
  QString id;
  QString name;
  QString schedule;

  [[nodiscard]] const QString& text(AccessField field) const;
  bool operator==(const ListRow&) const = default;
};

/// The employees of an access list in the order shown.
class AccessList {
 public:
  [[nodiscard]] const std::vector<ListRow>& rows() const { return rows_; }

  /// Replaces all rows by the lines of a file.
  void read(std::string file);
  /// The whole file in the order shown. @throws ClickError naming the row and the character it cannot hold
  [[nodiscard]] std::string write() const;
  /// The first row with a character that a file cannot hold.
  [[nodiscard]] std::optional<std::size_t> first_foreign_row() const;
  void clear() { rows_.clear(); }

  /// A new row goes to the end, sorted or not.
  void add(ListRow row) { rows_.push_back(std::move(row)); }
  /// Sets ID and schedule. The name stays as it is, and that is meant.
  void change(std::size_t row, const QString& id, const QString& schedule);
  void remove(std::size_t row);

  /// Sorts by a column's text, byte by byte; equal texts keep their order. @return for each new place the
  /// row's place before.
  std::vector<std::size_t> sort(AccessField field, bool descending);

 private:
  std::vector<ListRow> rows_;
};
