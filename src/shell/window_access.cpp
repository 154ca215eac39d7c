#include "shell/window_access.h"

#include <QAccessibleWidget>
#include <QWidget>

QAccessibleInterface* make_window_access(const QString& class_name, QObject* object) {
  const bool is_window =
      class_name == QStringLiteral("MainWindow") || class_name == QStringLiteral("FullTermWindow");
  return is_window ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window) : nullptr;
}
