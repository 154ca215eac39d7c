#pragma once

class QLabel;
class QString;
class QWidget;

/// A screen's heading.
[[nodiscard]] QLabel* heading(const QString& text);

/// The words beside a box, which are its name too.
[[nodiscard]] QLabel* label_for(QWidget* box);
