#pragma once

#include "tools/line_target.h"
#include "tools/terminal_view.h"

#include <deque>
#include <functional>
#include <memory>

class Ticker;
struct Services;

/// The box of the terminal in which every key goes out on the line at once. What it shows can be edited
/// with the caret's keys and Delete; that sends nothing.
class TypingBox : public TerminalView, private LineTarget {
  Q_OBJECT

 public:
  TypingBox(const char* object_name, const QString& accessible_name, Services& services,
            QWidget* parent = nullptr);
  ~TypingBox() override;

  /// Sends and shows text as if it were typed, in pieces that leave time for clicks. A line break in it is
  /// Enter. It ends early when the port is closed, takes no more, or another screen is shown. What is typed
  /// meanwhile goes out after it.
  void type(const QString& text);
  /// Takes text out of the box alone.
  void remove(int begin, int end) { erase(begin, end); }
  void cut();
  void paste();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void fill_menu(QMenu& menu) override;

 private:
  void show_item(std::string_view item) override;
  void show_character(char byte) override;
  void before_alt_code() override;
  void erase_selection();
  void in_turn(std::function<void()> action);
  void edit(QKeyEvent& event);
  void type_some();

  Services& services_;
  TerminalKeys keys_;
  QString to_type_;  ///< what is left of the text that is going out
  std::deque<std::function<void()>> waiting_;
  std::unique_ptr<Ticker> typist_;
};
