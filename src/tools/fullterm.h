#pragma once

#include "tools/fullterm_page.h"
#include "tools/line_target.h"

#include <QWidget>

#include <memory>

class DrawnText;
class QLabel;
class QLineEdit;
class QPushButton;
class Ticker;
struct Services;

/// The second terminal, a window of its own in which both directions are drawn on one page, typed text in
/// black and received text in blue. While it is the one that was activated last, it reads the port and the
/// terminal screen does not. What it drew is printed with F8.
class FullTermWindow : public QWidget, private LineTarget, private PageSurface {
  Q_OBJECT

 public:
  explicit FullTermWindow(Services& services);
  ~FullTermWindow() override;

  /// Shows the window, or brings the open one to the front.
  void open();
  [[nodiscard]] const std::string& captured() const { return page_.captured(); }
  /// Characters from outside the keyboard, as if they were typed.
  void type(const QString& text);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void make_controls();
  void connect_controls();
  void load();
  void activated();
  [[nodiscard]] bool in_a_box() const;
  void clear_screen();
  void receive_some();
  void receive_when_waiting();
  void do_print();
  bool take_input(QEvent* event);
  /// @param left pixels @param above_bottom twips
  void place_beneath(QWidget& widget, int left, int above_bottom);

  // LineTarget
  void show_item(std::string_view item) override;
  void show_character(char byte) override;

  // PageSurface
  void draw(std::string_view item, Ink ink) override;
  void end_line() override;
  void clear() override;

  Services& services_;
  TerminalKeys keys_;
  FullTermPage page_;
  DrawnText* pop1_;
  QLineEdit* sink_;
  QPushButton* clear_button_;
  QPushButton* print_button_;
  QLabel* nul_note_;
  QLabel* address_note_;
  QLabel* lines_note_;
  std::unique_ptr<Ticker> receive_timer_;
  bool printing_ = false;
  bool left_for_box_ = false;
};
