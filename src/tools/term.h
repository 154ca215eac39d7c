#pragma once

#include "shell/screen.h"

#include <memory>

class FullTermWindow;
class QLayout;
class TerminalView;
class TypingBox;

/// The terminal: what is typed goes out at once, what arrives is shown.
class TermScreen : public Screen {
  Q_OBJECT

 public:
  TermScreen(Services& services, QWidget* parent);
  ~TermScreen() override;

  void entered() override;
  /// The second terminal; nothing before it was opened for the first time.
  [[nodiscard]] FullTermWindow* full_screen() const { return full_screen_.get(); }

 private:
  QLayout* buttons();
  void open_full_screen();

  TypingBox* typing_;
  TerminalView* received_;
  std::unique_ptr<FullTermWindow> full_screen_;
};
