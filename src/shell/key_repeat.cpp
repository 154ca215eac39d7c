#include "shell/key_repeat.h"

#include <QKeyEvent>

bool KeyRepeat::unmarked(const QKeyEvent& event) {
  if (event.type() == QEvent::KeyRelease) {
    released_key_ = event.key();
    released_at_ = event.timestamp();
    return false;
  }
  return !event.isAutoRepeat() && released_at_ != 0 && event.timestamp() == released_at_ &&
         event.key() == released_key_;
}
