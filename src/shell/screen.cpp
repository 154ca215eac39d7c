#include "shell/screen.h"

#include "shell/button.h"

#include <QPushButton>

#include <utility>

namespace {

QString name_of_caption(const QString& caption) {
  QString name;
  for (const QChar character : caption.toLower()) {
    if (character.isLetterOrNumber()) {
      name += character;
    } else if (!name.isEmpty() && !name.endsWith(u'_')) {
      name += u'_';
    }
  }
  return name;
}

}  // namespace

Screen::Screen(const char* object_name, Services& services, QWidget* parent)
    : QWidget(parent), services_(services) {
  setObjectName(QLatin1String(object_name));
  hide();
}

QPushButton* Screen::add_button(const QString& caption, std::function<void()> handler,
                                const char* object_name) {
  const QString name = QLatin1String(object_name);
  QPushButton* const button = new_button(
      services_.clicks, caption, name.isEmpty() ? name_of_caption(caption) : name, std::move(handler), this);
  button->setAutoDefault(true);  // Enter presses the button that has the focus
  return button;
}

void Screen::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (QWidget* const first = first_control(); first != nullptr) {
    first->setFocus(Qt::OtherFocusReason);
  } else {
    focusNextChild();
  }
}
