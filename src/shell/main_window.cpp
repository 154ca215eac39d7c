#include "shell/main_window.h"

#include "shell/twips.h"
#include "shell/window_access.h"
#include "tools/terminal_receiver.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int panel_left = 2370;     // twips
constexpr int window_width = 11010;  // twips
constexpr int window_height = 8100;  // twips

/// The order in which the screens are hidden.
constexpr std::array hiding_order{ScreenCode::orinparam,  ScreenCode::com,       ScreenCode::diag,
                                  ScreenCode::orintautil, ScreenCode::term,      ScreenCode::test,
                                  ScreenCode::vellsetup,  ScreenCode::prottest,  ScreenCode::general,
                                  ScreenCode::keshsetup,  ScreenCode::keshutil,  ScreenCode::symbology,
                                  ScreenCode::quorsetup,  ScreenCode::asciichart};
static_assert(hiding_order.size() == MenuState::entry_count, "a screen that is not hidden stays on show");

constexpr const char* title =
    " Tarvos            Vell  Orin/Orinta  Kesh  Quor  SERIES                READER  UTILITY";

constexpr std::string_view polling_must_stop = "Polling must be stopped before changing screens";
constexpr std::string_view download_must_finish =
    "You are currently downloading and the download must finish before changing screens";
constexpr std::string_view upload_must_finish =
    "You are currently uploading and the upload must finish before changing screens";

QStringList captions() {
  QStringList list;
  for (const ScreenEntry& entry : screen_table) {
    list << QLatin1String(entry.caption);
  }
  return list;
}

std::size_t index_of(ScreenCode code) {
  const auto* const place = std::find_if(screen_table.begin(), screen_table.end(),
                                         [code](const ScreenEntry& entry) { return entry.code == code; });
  return static_cast<std::size_t>(place - screen_table.begin());
}

}  // namespace

MainWindow::MainWindow(Services& services)
    : services_(services), panel_area_(new QScrollArea(this)), menu_(new MenuColumn(captions(), this)) {
  QAccessible::installFactory(make_window_access);  // installed once, however often it is asked for
  setObjectName(QStringLiteral("Tarvos"));
  setWindowTitle(QLatin1String(title));
  auto* const panels = new QWidget;
  panel_area_->setFrameShape(QFrame::NoFrame);
  panel_area_->setFocusPolicy(Qt::NoFocus);
  panel_area_->setWidget(panels);
  for (std::size_t index = 0; index < screen_table.size(); ++index) {
    screens_.at(index) = screen_table.at(index).create(services, panels);
    screens_.at(index)->setAccessibleName(QLatin1String(screen_table.at(index).caption));
  }
  connect(menu_, &MenuColumn::entry_clicked, this,
          [this](int index) { services_.clicks.run([this, index] { menu_clicked(index); }); });
  connect(menu_, &MenuColumn::mouse_left, this, [this] {
    // A box that opens under the mouse takes no highlight away: whether the mouse has left is seen after it.
    if (!services_.dialogs.box_open()) {
      menu_->mouse_over_background();
    }
  });
  const QSize menu_size(twips_to_pixels(panel_left, *this), menu_->minimumSizeHint().height());
  setMinimumSize(menu_size.width() * 2, menu_size.height());
  QApplication::instance()->installEventFilter(this);
}

void MainWindow::start_up() {
  QSize size(twips_to_pixels(window_width, *this), twips_to_pixels(window_height, *this));
  for (const Screen* const screen : screens_) {
    size = size.expandedTo(screen->minimumSizeHint() + QSize(twips_to_pixels(panel_left, *this), 0));
  }
  const QSize title_bar(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
  resize(size.boundedTo(QWidget::screen()->availableSize() - title_bar));
  com_window();
  menu_->reset();
  services_.link.open_at_start_up();
}

Screen* MainWindow::screen(ScreenCode code) const {
  return screens_.at(index_of(code));
}

void MainWindow::display_window(int index) {
  services_.receiver.stop();
  show_screen(screen_table.at(static_cast<std::size_t>(index)).code);
}

bool MainWindow::nowindow() {
  services_.receiver.stop();
  for (const ScreenCode code : hiding_order) {
    screen(code)->hide();
  }
  return true;
}

void MainWindow::show_screen(ScreenCode code) {
  nowindow();
  screen_code_ = code;
  fit_panel();
  Screen& shown = *screen(code);
  shown.show();
  shown.setFocus(Qt::OtherFocusReason);
  // The focus may have scrolled a panel that is larger than the window: a screen begins at its top.
  panel_area_->horizontalScrollBar()->setValue(0);
  panel_area_->verticalScrollBar()->setValue(0);
  shown.entered();
}

/// The panel fills the window right of the menu; where the window is too small for it, it scrolls.
void MainWindow::fit_panel() {
  const int left = twips_to_pixels(panel_left, *this);
  panel_area_->setGeometry(left, 0, width() - left, height());
  if (screen_code_ == ScreenCode::none) {
    return;
  }
  Screen& shown = *screen(screen_code_);
  const QSize needed = shown.minimumSizeHint();
  QSize room = panel_area_->size();
  if (needed.height() > room.height()) {
    room.rwidth() -= style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  }
  if (needed.width() > room.width()) {
    room.rheight() -= style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  }
  panel_area_->widget()->resize(room.expandedTo(needed));
  shown.setGeometry(panel_area_->widget()->rect());
}

void MainWindow::menu_clicked(int index) {
  if (screen_code_ == ScreenCode::prottest && services_.busy.polling_on) {
    services_.dialogs.message(polling_must_stop);
  } else if (services_.busy.downloading_on) {
    services_.dialogs.message(download_must_finish);
  } else if (services_.busy.uploading_on) {
    services_.dialogs.message(upload_must_finish);
  } else {
    menu_->select(index);
    display_window(index);
  }
}

/// Enter opens the highlighted entry. It does not ask the busy flags, unlike a click: that is meant.
void MainWindow::open_highlighted() {
  if (const std::optional<int> index = menu_->state().hovered()) {
    menu_->select(*index);
    display_window(*index);
  }
}

bool MainWindow::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::MouseMove) {
    follow_mouse(receiver, *static_cast<QMouseEvent*>(event));
  } else if (event->type() == QEvent::KeyPress && receiver->isWidgetType()) {
    // The window sees every key before the control that has the focus, and only once.
    auto* const widget = static_cast<QWidget*>(receiver);
    if (widget->window() == this && (widget == focusWidget() || widget == this) &&
        handle_key(*static_cast<QKeyEvent*>(event))) {
      return true;
    }
  }
  return QWidget::eventFilter(receiver, event);
}

/// Over anything of the window but a menu entry the mouse takes the highlight away.
void MainWindow::follow_mouse(QObject* receiver, const QMouseEvent& event) {
  const QWidget* under = nullptr;
  if (receiver->isWidgetType()) {
    under = static_cast<QWidget*>(receiver);
  } else if (receiver == windowHandle()) {
    under = childAt(event.position().toPoint());
    under = under == nullptr ? this : under;
  }
  if (under != nullptr && under->window() == this && qobject_cast<const MenuEntry*>(under) == nullptr) {
    menu_->mouse_over_background();
  }
}

bool MainWindow::handle_key(const QKeyEvent& event) {
  if (screen_code_ == ScreenCode::term) {
    return false;
  }
  const int key = event.key();
  const bool presses =
      key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F1 || key == Qt::Key_F2;
  if (presses && event.isAutoRepeat()) {
    return true;  // a key held down is one press: it must not start an operation again and again
  }
  const auto press = [](QPushButton* button) {
    if (button != nullptr) {
      button->click();
    }
    return button != nullptr;
  };
  switch (key) {
    case Qt::Key_Down:
      menu_->move_highlight(1);
      return true;
    case Qt::Key_Up:
      menu_->move_highlight(-1);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!menu_->state().hovered()) {
        return false;
      }
      services_.clicks.run([this] { open_highlighted(); });
      return true;
    case Qt::Key_F1:
      return press(screen(screen_code_)->start_button());
    case Qt::Key_F2:
      return press(screen(screen_code_)->stop_button());
    default:
      return false;
  }
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
    services_.receiver.set_screenactive(false);
    if (left_menu_to_box_ && !menu_->under_mouse()) {
      menu_->mouse_over_background();
    }
    left_menu_to_box_ = false;
  } else if (event->type() == QEvent::ActivationChange) {
    left_menu_to_box_ = services_.dialogs.box_open() && menu_->under_mouse();
  }
  QWidget::changeEvent(event);
}

/// Ends the program with all its windows. Whatever runs is unwound at its next wait.
void MainWindow::closeEvent(QCloseEvent* event) {
  services_.link.closecomm();
  services_.pump.close_program();
  event->accept();
  Q_EMIT closed();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  menu_->setGeometry(0, 0, twips_to_pixels(panel_left, *this), height());
  fit_panel();
  QWidget::resizeEvent(event);
}
