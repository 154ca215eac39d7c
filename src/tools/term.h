#pragma once

#include "shell/screen.h"

class QLayout;
class TerminalView;
class TypingBox;

/// The terminal: what is typed goes out at once, what arrives is shown.
class TermScreen : public Screen {
  Q_OBJECT

 public:
  TermScreen(Services& services, QWidget* parent);

  void entered() override;

 private:
  QLayout* buttons();

  TypingBox* typing_;
  TerminalView* received_;
};
