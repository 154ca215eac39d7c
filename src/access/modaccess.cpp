#include "access/modaccess.h"

#include "shell/button.h"
#include "shell/text_box.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int schedule_digits = 2;

bool is_enter(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// What is typed next replaces the text, as after Tab. The caret stands at its beginning: a text read from a
/// file ends in blanks, and its beginning is what a person wants to see.
void enter_box(TextBox& box) {
  box.setFocus();
  const auto length = static_cast<int>(box.text().size());
  box.setSelection(length, -length);
}

}  // namespace

ModAccess::ModAccess(AccessListModel& list, ClickRunner& clicks, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), list_(list), clicks_(clicks), dialogs_(dialogs) {
  setObjectName(QStringLiteral("modaccess"));
  auto* const column = new QVBoxLayout(this);
  auto* const form = new QFormLayout;
  column->addLayout(form);
  id_ = add_box("employee_id", "Employee ID", 0);
  name_ = add_box("employee_name", "Employee Name", 0);
  schedule_ = add_box("employee_schedule", "Schedule #", schedule_digits);
  id_->setMinimumWidth(id_->fontMetrics().averageCharWidth() * 44);
  schedule_->set_width_in_characters(schedule_digits);
  for (TextBox* const box : {id_, name_, schedule_}) {
    form->addRow(box->accessibleName(), box);
  }
  auto* const buttons = new QHBoxLayout;
  column->addLayout(buttons);
  add_ = add_button("ADD", &ModAccess::add);
  change_ = add_button("CHANGE", &ModAccess::change);
  delete_ = add_button("DELETE", &ModAccess::remove);
  for (QPushButton* const button : {add_, change_, delete_}) {
    buttons->addWidget(button);
  }
}

TextBox* ModAccess::add_box(const char* object_name, const char* label, int maximum_length) {
  const KeyFilter filter = maximum_length == 0 ? KeyFilter::none : KeyFilter::digits;
  auto* const box = new TextBox(object_name, QLatin1String(label), maximum_length, filter, this);
  box->installEventFilter(this);
  keep_to_one_line(*box);
  return box;
}

QPushButton* ModAccess::add_button(const char* caption, void (ModAccess::*action)()) {
  const QString text = QLatin1String(caption);
  QPushButton* const button = new_button(
      clicks_, text, text.toLower(), [this, action] { (this->*action)(); }, this);
  button->setAutoDefault(false);  // Enter in a box moves on; it never presses a button
  return button;
}

void ModAccess::open_to_add() {
  setWindowTitle(QStringLiteral("Add Employee"));
  row_ = QPersistentModelIndex{};
  fill({});
  open();
}

void ModAccess::open_to_modify(const QModelIndex& row) {
  setWindowTitle(QStringLiteral("Modify or Delete Employee"));
  row_ = row;
  fill(list_.list().rows().at(static_cast<std::size_t>(row.row())));
  open();
}

void ModAccess::fill(const ListRow& row) {
  const bool adding = !row_.isValid();
  add_->setEnabled(adding);
  change_->setEnabled(!adding);
  delete_->setEnabled(!adding);
  id_->setText(row.id);
  name_->setText(row.name);
  schedule_->setText(row.schedule);
  for (TextBox* const box : {id_, name_, schedule_}) {
    box->setCursorPosition(0);
  }
  enter_box(*id_);
}

void ModAccess::add() {
  if (QString{id_->text()}.remove(u' ').isEmpty()) {
    dialogs_.message("Employee ID cannot be blank");
    enter_box(*id_);
    return;
  }
  list_.add({id_->text(), name_->text(), schedule_->text()});
  fill({});
}

/// Takes over ID and schedule, whatever the ID holds. The name is left as it is, and that is meant.
void ModAccess::change() {
  if (row_.isValid()) {
    list_.change(row_.row(), id_->text(), schedule_->text());
  }
  accept();
}

void ModAccess::remove() {
  if (row_.isValid()) {
    list_.remove(row_.row());
  }
  accept();
}

bool ModAccess::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() != QEvent::KeyPress) {
    return QDialog::eventFilter(receiver, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool onward = is_enter(key) || key == Qt::Key_Down;
  const bool back = key == Qt::Key_Up;
  if ((onward && receiver == id_) || (back && receiver == schedule_)) {
    enter_box(*name_);
  } else if (onward && receiver == name_) {
    enter_box(*schedule_);
  } else if (back && receiver == name_) {
    enter_box(*id_);
  } else {
    return is_enter(key) || QDialog::eventFilter(receiver, event);
  }
  return true;
}

void ModAccess::keyPressEvent(QKeyEvent* event) {
  if (!is_enter(event->key())) {
    QDialog::keyPressEvent(event);
  } else if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) {
    button->click();
  }
}
