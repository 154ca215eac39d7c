#include "shell/qt_dialogs.h"

#include "access/folders.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

namespace {

QString text_of(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QMessageBox::StandardButton show_box(std::string_view text, QMessageBox::StandardButtons buttons) {
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(QStringLiteral("Tarvos"));
  box.setTextFormat(Qt::PlainText);
  box.setText(text_of(text).replace(u'\r', u'\n'));
  box.setStandardButtons(buttons);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

void set_up(QFileDialog& dialog, const FileRequest& request) {
  const std::filesystem::path folder = folder_to_start_in(request.folder);
  if (!folder.empty()) {
    dialog.setDirectory(QString::fromStdU16String(folder.u16string()));
  }
  dialog.setNameFilter(QStringLiteral("Text (*.txt)"));
  dialog.setDefaultSuffix(QStringLiteral("txt"));
  dialog.selectFile(text_of(request.file_name));
}

std::filesystem::path chosen_in(const QFileDialog& dialog) {
  return dialog.selectedFiles().value(0).toStdU16String();
}

/// Why a file cannot be written there; empty when it can. It is tried, because permissions alone tell too
/// little; what was there stays as it was.
QString obstacle(const QString& name) {
  QFile file(name);
  const bool was_there = file.exists();
  if (!file.open(QIODevice::ReadWrite | QIODevice::Append)) {
    return QStringLiteral("%1 cannot be written: %2\nChoose another place.")
        .arg(QDir::toNativeSeparators(name), file.errorString());
  }
  file.close();
  if (!was_there) {
    file.remove();
  }
  return {};
}

}  // namespace

/// A window closed during a blocking write is told only now; it must not find itself behind a box.
void QtDialogs::honour_a_close() {
  pump_.sleep(std::chrono::milliseconds(1));
}

void QtDialogs::message(std::string_view text) {
  honour_a_close();
  show_box(text, QMessageBox::Ok);
}

bool QtDialogs::ask(std::string_view text) {
  honour_a_close();
  return show_box(text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

FileAnswer QtDialogs::choose_open_file(const FileRequest& request) {
  honour_a_close();
  QFileDialog dialog(QApplication::activeWindow(), text_of(request.title));
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  set_up(dialog, request);
  return dialog.exec() == QDialog::Accepted ? FileAnswer{true, chosen_in(dialog)}
                                            : FileAnswer{false, std::filesystem::path(request.file_name)};
}

FileAnswer QtDialogs::choose_save_file(const FileRequest& request) {
  honour_a_close();
  QFileDialog dialog(QApplication::activeWindow(), text_of(request.title));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  set_up(dialog, request);
  while (dialog.exec() == QDialog::Accepted) {
    const QString why = obstacle(dialog.selectedFiles().value(0));
    if (why.isEmpty()) {
      return {true, chosen_in(dialog)};
    }
    message(why.toStdString());
  }
  return {false, std::filesystem::path(request.file_name)};
}
