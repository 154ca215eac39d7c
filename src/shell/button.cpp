#include "shell/button.h"

#include "link/click.h"

#include <QPushButton>

#include <utility>

QPushButton* new_button(ClickRunner& clicks, const QString& caption, const QString& object_name,
                        std::function<void()> handler, QWidget* parent) {
  auto* const button = new QPushButton(caption, parent);
  button->setObjectName(object_name);
  QObject::connect(button, &QPushButton::clicked, button,
                   [&clicks, handler = std::move(handler)] { clicks.run(handler); });
  return button;
}
