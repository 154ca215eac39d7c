#include "access/access_list_model.h"

namespace {

constexpr std::array headings{"ID Number", "Employee Name", "Schedule"};
static_assert(headings.size() == access_columns.size());

AccessField field_of(int column) {
  return access_columns.at(static_cast<std::size_t>(column)).field;
}

}  // namespace

void AccessListModel::read(std::string file) {
  beginResetModel();
  list_.read(std::move(file));
  endResetModel();
}

void AccessListModel::clear() {
  beginResetModel();
  list_.clear();
  endResetModel();
}

void AccessListModel::add(ListRow row) {
  beginInsertRows({}, rowCount(), rowCount());
  list_.add(std::move(row));
  endInsertRows();
}

void AccessListModel::change(int row, const QString& id, const QString& schedule) {
  list_.change(static_cast<std::size_t>(row), id, schedule);
  Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void AccessListModel::remove(int row) {
  beginRemoveRows({}, row, row);
  list_.remove(static_cast<std::size_t>(row));
  endRemoveRows();
}

void AccessListModel::sort(int column, Qt::SortOrder order) {
  Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const std::vector<std::size_t> old_places = list_.sort(field_of(column), order == Qt::DescendingOrder);
  std::vector<int> new_places(old_places.size());
  for (std::size_t place = 0; place < old_places.size(); ++place) {
    new_places[old_places[place]] = static_cast<int>(place);
  }
  // Selection and open dialogs stay with their employee, not with the row's number.
  const QModelIndexList old_indexes = persistentIndexList();
  QModelIndexList new_indexes;
  for (const QModelIndex& old_index : old_indexes) {
    new_indexes << index(new_places[static_cast<std::size_t>(old_index.row())], old_index.column());
  }
  changePersistentIndexList(old_indexes, new_indexes);
  Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int AccessListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.rows().size());
}

int AccessListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings.size());
}

QVariant AccessListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) {
    return {};
  }
  return list_.rows().at(static_cast<std::size_t>(index.row())).text(field_of(index.column()));
}

QVariant AccessListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
      return QString{QLatin1String(headings.at(static_cast<std::size_t>(section)))};
    case Qt::ToolTipRole:
      return QStringLiteral("Sorts the list by this column (Ctrl+%1)").arg(section + 1);
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}
