#include "shell/screen.h"

#include <utility>

#include <QPushButton>

Screen::Screen(const char* object_name, Services& services, QWidget* parent)
    : QWidget(parent), services_(services) {
  setObjectName(QLatin1String(object_name));
  setMouseTracking(true);
  hide();
}

QPushButton* Screen::add_button(const QString& caption, const char* object_name, std::function<void()> handler) {
  auto* const button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(object_name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this,
          [this, action = std::move(handler)] { services_.clicks.run(action); });
  return button;
}

void Screen::enterEvent(QEnterEvent* event) {
  Q_EMIT mouse_over();
  QWidget::enterEvent(event);
}

void Screen::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT mouse_over();
  QWidget::mouseMoveEvent(event);
}
