#pragma once

#include "link/dialogs.h"
#include "link/event_pump.h"

#include <QMessageBox>
#include <QPointer>

/// The boxes of the running program, modal over the window that a person was in last.
class QtDialogs : public Dialogs {
 public:
  explicit QtDialogs(EventPump& pump);

  void message(std::string_view text) override;
  bool ask(std::string_view text) override;
  FileAnswer choose_open_file(const FileRequest& request) override;
  FileAnswer choose_save_file(const FileRequest& request) override;

  /// Shows a dialog as a box of the program. @return whether it was accepted
  /// @throws ProgramClosing when it was ended by the closing of the program.
  bool accepted(QDialog& dialog);

  /// The window that a box stands before: the active one; while none is, because a box has just been closed
  /// or another program is in front, the one that was active last.
  [[nodiscard]] QWidget* window_for_box() const;

 private:
  QMessageBox::StandardButton show_box(std::string_view text, QMessageBox::StandardButtons buttons);
  int exec(QDialog& dialog);
  void honour_a_close();

  EventPump& pump_;
  QPointer<QWidget> last_window_;
  QObject context_;  ///< ends the connection with the dialogs
};
