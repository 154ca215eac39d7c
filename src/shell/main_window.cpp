#include "shell/main_window.h"

#include "shell/twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int panel_left = 2370;     // twips
constexpr int window_width = 11010;  // twips
constexpr int window_height = 8100;  // twips

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
    : services_(services), menu_(new MenuColumn(captions(), this)), screens_{} {
  setObjectName(QStringLiteral("Tarvos"));
  setWindowTitle(QLatin1String(title));
  setMouseTracking(true);
  connect(menu_, &MenuColumn::entry_clicked, this,
          [this](int index) { services_.clicks.run([this, index] { menu_clicked(index); }); });
  QSize smallest;
  for (std::size_t index = 0; index < screen_table.size(); ++index) {
    screens_.at(index) = screen_table.at(index).create(services, this);
    connect(screens_.at(index), &Screen::mouse_over, menu_, &MenuColumn::mouse_over_background);
    smallest = smallest.expandedTo(screens_.at(index)->minimumSizeHint());
  }
  setMinimumSize(smallest + QSize(twips_to_pixels(panel_left, *this), 0));
  QApplication::instance()->installEventFilter(this);
}

void MainWindow::start_up() {
  resize(QSize(twips_to_pixels(window_width, *this), twips_to_pixels(window_height, *this))
             .expandedTo(minimumSize()));
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
  for (Screen* const screen : screens_) {
    screen->hide();
  }
  return true;
}

void MainWindow::show_screen(ScreenCode code) {
  nowindow();
  Screen& shown = *screen(code);
  place(shown);
  shown.show();
  screen_code_ = code;
  shown.setFocus(Qt::OtherFocusReason);
  shown.entered();
}

void MainWindow::place(Screen& screen) {
  const int left = twips_to_pixels(panel_left, *this);
  screen.setGeometry(left, 0, width() - left, height());
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
  const int index = *menu_->state().hovered();
  menu_->select(index);
  display_window(index);
}

bool MainWindow::eventFilter(QObject* receiver, QEvent* event) {
  // The window sees every key before the control that has the focus, and only once.
  if (event->type() == QEvent::KeyPress && receiver->isWidgetType()) {
    auto* const widget = static_cast<QWidget*>(receiver);
    if (widget->window() == this && (widget == focusWidget() || widget == this) &&
        handle_key(static_cast<QKeyEvent*>(event)->key())) {
      return true;
    }
  }
  return QWidget::eventFilter(receiver, event);
}

bool MainWindow::handle_key(int key) {
  if (screen_code_ == ScreenCode::term) {
    return false;
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

void MainWindow::mouseMoveEvent(QMouseEvent* event) {
  menu_->mouse_over_background();
  QWidget::mouseMoveEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  menu_->setGeometry(0, 0, twips_to_pixels(panel_left, *this), height());
  if (screen_code_ != ScreenCode::none) {
    place(*screen(screen_code_));
  }
  QWidget::resizeEvent(event);
}
