#pragma once

#include <QAccessibleInterface>

/// Tells assistive clients what a TerminalView shows and what is selected in it. What they put into a typing
/// box is typed. For QAccessible::installFactory().
[[nodiscard]] QAccessibleInterface* make_terminal_view_access(const QString& class_name, QObject* object);
