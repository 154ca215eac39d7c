#pragma once

#include "access/access_list_model.h"
#include "link/click.h"

#include <QDialog>
#include <QPersistentModelIndex>

class QPushButton;
class TextBox;

/// The dialog in which an employee is added, changed or deleted. It is modal over the list.
class ModAccess : public QDialog {
  Q_OBJECT

 public:
  ModAccess(AccessListModel& list, ClickRunner& clicks, Dialogs& dialogs, QWidget* parent);

  /// Opens with empty boxes; stays open for one employee after another.
  void open_to_add();
  /// Opens with the boxes filled from a row of the list.
  void open_to_modify(const QModelIndex& row);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  TextBox* add_box(const char* object_name, const char* label, int maximum_length);
  QPushButton* add_button(const char* caption, void (ModAccess::*action)());
  void fill(const ListRow& row);
  void add();
  void change();
  void remove();

  AccessListModel& list_;
  ClickRunner& clicks_;
  Dialogs& dialogs_;
  TextBox* id_;
  TextBox* name_;
  TextBox* schedule_;
  QPushButton* add_;
  QPushButton* change_;
  QPushButton* delete_;
  QPersistentModelIndex row_;
};
