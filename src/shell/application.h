#pragma once

#include "shell/key_repeat.h"

#include <QApplication>

/// The toolkit's application, in which a key held down is always told from one that is pressed again.
class Application : public QApplication {
  Q_OBJECT

 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  KeyRepeat key_repeat_;
};
