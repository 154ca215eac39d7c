#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QEvent;
class QWindow;

/// Holds back clicks and keys of the whole application during a fixed pause, and gives them out again
/// afterwards in their order. Everything else (painting, closing, the window manager) goes through. When a
/// box has opened before they are given out, they are dropped, as a click beneath an open box is.
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
    QPointer<QWindow> modal;  ///< the box that was open then, if any
  };

  int depth_ = 0;
  std::vector<Held> held_;
};
