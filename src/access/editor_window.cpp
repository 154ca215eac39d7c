#include "access/editor_window.h"

#include "shell/safe_file.h"

#include <QAction>

EditorWindow::EditorWindow(const char* object_name, Services& services, QWidget* parent)
    : QMainWindow(parent, Qt::Window), services_(services) {
  setObjectName(QLatin1String(object_name));
}

void EditorWindow::open() {
  if (!isVisible()) {
    load();
    show();
  }
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

void EditorWindow::show_file_name(const char* words, const std::filesystem::path& name) {
  const QString title = QLatin1String(words) + QString::fromStdString(shown_name(name));
  // "[*]" in a title is a place holder of the toolkit; two stand for the characters themselves.
  setWindowTitle(QString(title).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
}

QAction* EditorWindow::new_entry(const char* caption, std::function<void()> handler) {
  auto* const entry = new QAction(QLatin1String(caption), this);
  entry->setMenuRole(QAction::NoRole);
  connect(entry, &QAction::triggered, this, [this, action = std::move(handler)] { run(action); });
  return entry;
}
