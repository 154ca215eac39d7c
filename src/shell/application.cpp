#include "shell/application.h"

#include <QKeyEvent>

bool Application::notify(QObject* receiver, QEvent* event) {
  // Keys reach a window first, and then its controls.
  const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  if (!key || !receiver->isWindowType() || !key_repeat_.unmarked(static_cast<QKeyEvent&>(*event))) {
    return QApplication::notify(receiver, event);
  }
  const auto& press = static_cast<QKeyEvent&>(*event);
  QKeyEvent marked(press.type(), press.key(), press.modifiers(), press.nativeScanCode(),
                   press.nativeVirtualKey(), press.nativeModifiers(), press.text(), true,
                   static_cast<quint16>(press.count()), press.device());
  marked.setTimestamp(press.timestamp());
  const bool handled = QApplication::notify(receiver, &marked);
  event->setAccepted(marked.isAccepted());
  return handled;
}
