#pragma once

#include "access/access_list.h"

#include <QAbstractTableModel>

#include <string>

/// The access list as a view sees it: one row an employee, the columns ID, name and schedule.
class AccessListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  [[nodiscard]] const AccessList& list() const { return list_; }
  void read(std::string file);
  void clear();
  void add(ListRow row);
  void change(int row, const QString& id, const QString& schedule);
  void remove(int row);
  void sort(int column, Qt::SortOrder order) override;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  AccessList list_;
};
