#include "shell/qt_dialogs.h"

#include "shell/folders.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QTemporaryFile>
#include <QWindow>

#include <algorithm>

namespace {

QString text_of(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QtDialogs::QtDialogs(EventPump& pump) : pump_(pump) {
  QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &context_, [this] {
    if (QWidget* const active = QApplication::activeWindow(); active != nullptr && !box_open()) {
      last_window_ = active;
    }
  });
}

QWidget* QtDialogs::window_for_box() const {
  if (QWidget* const active = QApplication::activeWindow(); active != nullptr) {
    return active;
  }
  if (last_window_ != nullptr && last_window_->isVisible()) {
    return last_window_;
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto shown = std::find_if(windows.begin(), windows.end(), [](const QWidget* widget) {
    return widget->isVisible() && widget->windowType() == Qt::Window;
  });
  return shown == windows.end() ? nullptr : *shown;
}

QMessageBox::StandardButton QtDialogs::show_box(std::string_view text, QMessageBox::StandardButtons buttons) {
  QMessageBox box(window_for_box());
  box.setWindowTitle(QStringLiteral("Tarvos"));
  box.setTextFormat(Qt::PlainText);
  box.setText(text_of(text).replace(u'\r', u'\n'));
  box.setStandardButtons(buttons);
  return static_cast<QMessageBox::StandardButton>(exec(box));
}

int QtDialogs::exec(QDialog& dialog) {
  box_opens();
  const int result = dialog.exec();
  for (auto& action : box_closes()) {
    QMetaObject::invokeMethod(qApp, std::move(action), Qt::QueuedConnection);
  }
  return result;
}

namespace {

/// Asked before the dialog is made: one that has looked at a folder before it was there does not see it.
QString folder_of(const FileRequest& request) {
  return QString::fromStdU16String(folder_to_start_in(request.folder).u16string());
}

void set_up(QFileDialog& dialog, const FileRequest& request) {
  dialog.setNameFilter(text_of(request.filter));
  dialog.setDefaultSuffix(text_of(request.extension));
  dialog.selectFile(text_of(request.file_name));
}

std::filesystem::path chosen_in(const QFileDialog& dialog) {
  return dialog.selectedFiles().value(0).toStdU16String();
}

/// Why a file cannot be written there; empty when it can. It is tried, because permissions alone tell too
/// little: the folder takes a new file, unless an old one is written in place, and a file that is there
/// opens. Nothing that was there changes.
QString obstacle(const QString& name, const FileRequest& request) {
  const bool new_file = !QFileInfo::exists(name) || !request.written_in_place;
  QTemporaryFile beside(QFileInfo(name).absolutePath() + QStringLiteral("/tarvos-XXXXXX"));
  QFile file(name);
  QString why;
  if (new_file && !beside.open()) {
    why = beside.errorString();
  } else if (QFileInfo::exists(name) &&
             !file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::ExistingOnly)) {
    why = file.errorString();
  }
  return why.isEmpty() ? QString()
                       : QStringLiteral("%1 cannot be written: %2\nChoose another place.")
                             .arg(QDir::toNativeSeparators(name), why);
}

}  // namespace

/// A window closed during a blocking write is told only now; it must not find itself behind a box.
void QtDialogs::honour_a_close() {
  pump_.sleep(std::chrono::milliseconds(0));
}

bool QtDialogs::accepted(QDialog& dialog) {
  honour_a_close();
  const bool yes = exec(dialog) == QDialog::Accepted;
  pump_.throw_if_closing();
  return yes;
}

void QtDialogs::message(std::string_view text) {
  honour_a_close();
  show_box(text, QMessageBox::Ok);
  pump_.throw_if_closing();
}

bool QtDialogs::ask(std::string_view text) {
  honour_a_close();
  const bool yes = show_box(text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
  pump_.throw_if_closing();
  return yes;
}

FileAnswer QtDialogs::choose_open_file(const FileRequest& request) {
  QFileDialog dialog(window_for_box(), text_of(request.title), folder_of(request));
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  set_up(dialog, request);
  return accepted(dialog) ? FileAnswer{true, chosen_in(dialog)}
                          : FileAnswer{false, std::filesystem::path(request.file_name)};
}

FileAnswer QtDialogs::choose_save_file(const FileRequest& request) {
  QFileDialog dialog(window_for_box(), text_of(request.title), folder_of(request));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  set_up(dialog, request);
  while (accepted(dialog)) {
    const QString why = obstacle(dialog.selectedFiles().value(0), request);
    if (why.isEmpty()) {
      return {true, chosen_in(dialog)};
    }
    message(why.toStdString());
  }
  return {false, std::filesystem::path(request.file_name)};
}
