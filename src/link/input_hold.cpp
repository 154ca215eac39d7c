#include "link/input_hold.h"

#include <QCoreApplication>
#include <QEvent>

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
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::ContextMenu:
    case QEvent::Shortcut:
      return true;
    default:
      return false;
  }
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
  for (auto& [receiver, event] : std::exchange(held_, {})) {
    if (receiver) {
      QCoreApplication::postEvent(receiver, event.release());
    }
  }
}

bool InputHold::eventFilter(QObject* receiver, QEvent* event) {
  // A shortcut must not be looked up for a key that is being held back.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  if (!is_input(event->type())) {
    return false;
  }
  held_.emplace_back(receiver, event->clone());
  return true;
}
