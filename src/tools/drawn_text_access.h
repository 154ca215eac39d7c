#pragma once

#include <QAccessibleInterface>

/// Tells assistive clients what a DrawnText shows. For QAccessible::installFactory().
[[nodiscard]] QAccessibleInterface* make_drawn_text_access(const QString& class_name, QObject* object);
