#pragma once

#include <functional>

class ClickRunner;
class QPushButton;
class QString;
class QWidget;

/// A button that runs `handler` as a click of the program.
[[nodiscard]] QPushButton* new_button(ClickRunner& clicks, const QString& caption, const QString& object_name,
                                      std::function<void()> handler, QWidget* parent);
