#pragma once

#include <QAccessibleInterface>

/// Tells assistive clients that the main window and the full-screen terminal are windows: a plain widget is
/// told as nothing in particular. For QAccessible::installFactory().
[[nodiscard]] QAccessibleInterface* make_window_access(const QString& class_name, QObject* object);
