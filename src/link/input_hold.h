#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QEvent;

/// Holds back clicks and keys of the whole application during a fixed pause, and gives them out again
/// afterwards in their order. Everything else (painting, closing, the window manager) goes through.
class InputHold : public QObject {
 public:
  explicit InputHold(QObject* parent = nullptr);

  void begin();
  void end();
  [[nodiscard]] bool holding() const { return depth_ > 0; }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  struct Held {
    QPointer<QObject> receiver;
    std::function<void(QObject&)> deliver;
  };

  int depth_ = 0;
  std::vector<Held> held_;
};
