#pragma once

#include "shell/menu_column.h"
#include "shell/screen_table.h"

#include <QWidget>

#include <array>

class QKeyEvent;
class QMouseEvent;
class QScrollArea;

/// The one window: the menu at the left, one of fourteen screens at the right. It alone knows all screens.
class MainWindow : public QWidget {
  Q_OBJECT

 public:
  explicit MainWindow(Services& services);

  /// The built-in defaults, the communication screen, then the first opening of the port.
  void start_up();

  [[nodiscard]] ScreenCode screen_code() const { return screen_code_; }
  [[nodiscard]] MenuColumn& menu() const { return *menu_; }
  [[nodiscard]] Screen* screen(ScreenCode code) const;

  /// Stops the terminal timer and shows the screen of a menu entry (0 to 13).
  void display_window(int index);
  /// Stops the terminal timer and hides all screens. @return true, always.
  bool nowindow();

  // Each hides the others, places and shows its screen and records its code.
  void com_window() { show_screen(ScreenCode::com); }
  void vellsetup_window() { show_screen(ScreenCode::vellsetup); }
  void orinparam_window() { show_screen(ScreenCode::orinparam); }
  void keshsetup_window() { show_screen(ScreenCode::keshsetup); }
  void quorsetup_window() { show_screen(ScreenCode::quorsetup); }
  void term_window() { show_screen(ScreenCode::term); }
  void prottest_window() { show_screen(ScreenCode::prottest); }
  void test_window() { show_screen(ScreenCode::test); }
  void symbology_window() { show_screen(ScreenCode::symbology); }
  void diag_window() { show_screen(ScreenCode::diag); }
  void orintautil_window() { show_screen(ScreenCode::orintautil); }
  void keshutil_window() { show_screen(ScreenCode::keshutil); }
  void asciichart_window() { show_screen(ScreenCode::asciichart); }
  void general_window() { show_screen(ScreenCode::general); }

 Q_SIGNALS:
  /// The window has been closed; the program ends with all its windows.
  void closed();

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_screen(ScreenCode code);
  void menu_clicked(int index);
  void open_highlighted();
  /// @return whether the window took the key.
  bool handle_key(const QKeyEvent& event);
  void follow_mouse(QObject* receiver, const QMouseEvent& event);
  void fit_panel();

  Services& services_;
  QScrollArea* panel_area_;  ///< scrolls where the window is smaller than the panel needs
  MenuColumn* menu_;
  std::array<Screen*, MenuState::entry_count> screens_{};
  ScreenCode screen_code_ = ScreenCode::none;
  bool left_menu_to_box_ = false;  ///< a box took the activation while the mouse was over the menu
};
