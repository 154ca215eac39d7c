#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <utility>
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
  int depth_ = 0;
  std::vector<std::pair<QPointer<QObject>, std::unique_ptr<QEvent>>> held_;
};
