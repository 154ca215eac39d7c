#pragma once

#include <QAccessibleInterface>

/// Lets assistive clients click an option that is chosen already, as the mouse can: the library's own way
/// toggles, and what is on stays on without a word. For QAccessible::installFactory().
[[nodiscard]] QAccessibleInterface* make_option_access(const QString& class_name, QObject* object);
