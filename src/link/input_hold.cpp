#include "link/input_hold.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>

#include <memory>
#include <utility>

namespace {

bool is_input(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::Shortcut:
      return true;
    default:
      return false;
  }
}

/// A mouse event is made anew when it is given out: a copy would share the mouse's position with all later
/// events, and a button clicked during the pause would be let go wherever the mouse has moved to since.
std::function<void(QObject&)> mouse_delivery(const QMouseEvent& mouse) {
  return [type = mouse.type(), position = mouse.position(), scene = mouse.scenePosition(),
          global = mouse.globalPosition(), button = mouse.button(), buttons = mouse.buttons(),
          modifiers = mouse.modifiers(), device = QPointer(mouse.pointingDevice()),
          timestamp = mouse.timestamp()](QObject& receiver) {
    const QPointingDevice* const source = device ? device.data() : QPointingDevice::primaryPointingDevice();
    QMouseEvent again(type, position, scene, global, button, buttons, modifiers, source);
    again.setTimestamp(timestamp);
    QCoreApplication::sendEvent(&receiver, &again);
  };
}

std::function<void(QObject&)> delivery(const QEvent& event) {
  return [copy = std::shared_ptr<QEvent>(event.clone())](QObject& receiver) {
    QCoreApplication::sendEvent(&receiver, copy.get());
  };
}

}  // namespace

InputHold::InputHold(QObject* parent) : QObject(parent) {}

void InputHold::begin() {
  if (depth_++ == 0) {
    QCoreApplication::instance()->installEventFilter(this);
  }
}

void InputHold::end() {
  if (--depth_ > 0) {
    return;
  }
  QCoreApplication::instance()->removeEventFilter(this);
  for (Held& held : std::exchange(held_, {})) {
    QMetaObject::invokeMethod(
        this,
        [held = std::move(held)] {
          const QWindow* const modal = QGuiApplication::modalWindow();
          if (held.receiver && (modal == nullptr || modal == held.modal)) {
            held.deliver(*held.receiver);
          }
        },
        Qt::QueuedConnection);
  }
}

bool InputHold::eventFilter(QObject* receiver, QEvent* event) {
  if (!is_input(event->type())) {
    return false;
  }
  const auto* const mouse = dynamic_cast<QMouseEvent*>(event);
  held_.push_back({receiver, mouse != nullptr ? mouse_delivery(*mouse) : delivery(*event),
                   QGuiApplication::modalWindow()});
  return true;
}
