#pragma once

#include "access/access_list_model.h"
#include "access/editor_window.h"

#include <filesystem>

class ModAccess;
class QTableView;

/// The access list editor.
class AccessWindow : public EditorWindow {
  Q_OBJECT

 public:
  AccessWindow(Services& services, QWidget* parent);

  /// Asked for before the window closes; nothing here sets it, so that the question never comes, and both are
  /// meant to be so.
  void set_changed(bool changed) { changed_ = changed; }

 protected:
  void load() override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  void make_view();
  void open_file();
  void save_file();
  void sort_by(int column);
  void modify(const QModelIndex& row);

  AccessListModel model_;
  QTableView* view_;
  ModAccess* modaccess_;
  std::filesystem::path file_name_;
  bool changed_ = false;
  int sorted_column_ = -1;
  Qt::SortOrder order_ = Qt::AscendingOrder;
};
