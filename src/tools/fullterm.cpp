#include "tools/fullterm.h"

#include "link/timings.h"
#include "shell/code_page.h"
#include "shell/fonts.h"
#include "shell/services.h"
#include "shell/twips.h"
#include "tools/caret_code.h"
#include "tools/drawn_text.h"
#include "tools/flag_guard.h"
#include "tools/fullterm_print.h"
#include "tools/terminal_receiver.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace {

constexpr qreal points = 9.75;
constexpr int beneath_area = 1200;  // twips, as are the places of what stands there
constexpr int note_left = 120;
constexpr int button_left = 5400;
constexpr int second_button_left = 7000;

constexpr QColor typed_colour{0x00, 0x00, 0x00};
constexpr QColor received_colour{0x00, 0x00, 0xFF};

/// The most that one tick draws, so that a flood leaves time for clicks: 25 times what the fastest line
/// brings.
constexpr int most_bytes_a_tick = 1024;

/// A received character as it is drawn. CR is a control character like the others and breaks no line here.
std::string received_item(char byte) {
  return is_control(byte) ? caret_code(byte) : std::string{byte};
}

}  // namespace

FullTermWindow::FullTermWindow(Services& services)
    : QWidget(nullptr, Qt::Window),
      LineTarget(services.link),
      services_(services),
      keys_(*this, TerminalKeys::CaretKeys::none),
      page_(*this),
      receive_timer_(services.pump.make_ticker(timings::full_screen_tick, [this] { receive_some(); })) {
  setObjectName(QStringLiteral("fullterm"));
  setWindowTitle(QStringLiteral("Terminal Mode - Full Screen"));
  make_controls();
  connect_controls();
  const QSize title_bar(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
  setMinimumSize(lines_note_->sizeHint().width() * 2,
                 pop1_->size_for(20, 3).height() + twips_to_pixels(beneath_area, *this));
  resize((pop1_->size_for(80, 30) + QSize(0, twips_to_pixels(beneath_area, *this)))
             .boundedTo(screen()->availableSize() - title_bar));
}

void FullTermWindow::make_controls() {
  QFont bold = fonts::fixed(points);
  bold.setBold(true);
  sink_ = new QLineEdit(this);  // behind the drawing area
  sink_->setObjectName(QStringLiteral("Text1"));
  sink_->setAccessibleName(QStringLiteral("Typed Characters"));
  sink_->setFrame(false);
  pop1_ = new DrawnText("pop1", QStringLiteral("Full-Screen Terminal"), bold, this);
  pop1_->setAttribute(Qt::WA_InputMethodEnabled);
  nul_note_ = new QLabel(QStringLiteral("F9 = NULL"), this);
  address_note_ = new QLabel(QStringLiteral("F10 = READER ADDRESS"), this);
  lines_note_ = new QLabel(QStringLiteral("SCREEN WILL CLEAR AFTER 30 LINES OF DATA"), this);
  clear_button_ = new QPushButton(QStringLiteral("Clear Screen"), this);
  clear_button_->setObjectName(QStringLiteral("clear_screen"));
  // Clicked, it does nothing: printing is reached with F8 alone. The three blanks and the rest are meant.
  print_button_ = new QPushButton(QStringLiteral("F8   Print Screen"), this);
  print_button_->setObjectName(QStringLiteral("print_screen"));
  for (QPushButton* const button : {clear_button_, print_button_}) {
    button->setFocusPolicy(Qt::NoFocus);  // the keys that would press it are typed characters
  }
  for (QWidget* const receiver : {static_cast<QWidget*>(sink_), static_cast<QWidget*>(pop1_)}) {
    receiver->installEventFilter(this);
  }
}

void FullTermWindow::connect_controls() {
  connect(clear_button_, &QPushButton::clicked, this,
          [this] { services_.clicks.run([this] { clear_screen(); }); });
  connect(sink_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (!text.isEmpty()) {
      sink_->clear();
      type(text);
    }
  });
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
    // Whoever goes elsewhere after a box, and comes back later, does not come back from the box.
    if (!in_a_box() && window != nullptr && window != windowHandle()) {
      left_for_box_ = false;
    }
  });
}

FullTermWindow::~FullTermWindow() {
  services_.receiver.set_full_screen_listener(nullptr);
}

void FullTermWindow::open() {
  if (isVisible()) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
  } else {
    load();
    show();
  }
  activateWindow();
}

void FullTermWindow::type(const QString& text) {
  services_.clicks.run([this, text] {
    if (isVisible()) {
      keys_.characters(text);
    }
  });
}

void FullTermWindow::load() {
  keys_.reset();
  left_for_box_ = false;
  services_.link.clearcomm();
  services_.receiver.set_full_screen_listener([this] { receive_when_waiting(); });
  page_.clear();
}

void FullTermWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isVisible()) {
    if (isActiveWindow()) {
      keys_.focus_gained(QGuiApplication::queryKeyboardModifiers());
      activated();
    } else {
      keys_.focus_lost();
      left_for_box_ = in_a_box();
    }
  }
  QWidget::changeEvent(event);
}

/// Takes the port over from the terminal screen. Every activation begins an empty page, and that is meant;
/// coming back from a box is none.
void FullTermWindow::activated() {
  services_.receiver.set_screenactive(true);
  if (!std::exchange(left_for_box_, false)) {
    clear_screen();
  }
  receive_when_waiting();
}

bool FullTermWindow::in_a_box() const {
  return printing_ || services_.dialogs.box_open();
}

void FullTermWindow::closeEvent(QCloseEvent* event) {
  receive_timer_->stop();
  services_.receiver.set_full_screen_listener(nullptr);
  // The terminal's receiver runs on only where a screen has started it.
  services_.receiver.set_screenactive(false);
  QWidget::closeEvent(event);
}

void FullTermWindow::clear_screen() {
  page_.clear();
  sink_->setFocus();
}

void FullTermWindow::receive_when_waiting() {
  if (services_.receiver.screenactive() && !receive_timer_->running() && services_.link.bytes_waiting() > 0) {
    receive_timer_->start();
  }
}

void FullTermWindow::receive_some() {
  receive_timer_->stop();
  if (!services_.receiver.screenactive() || !services_.link.comopen()) {
    return;
  }
  int count = 0;
  for (; count < most_bytes_a_tick; ++count) {
    const std::optional<char> byte = services_.link.read_char();
    if (!byte) {
      break;
    }
    if (count == 0) {
      page_.mark();
    }
    page_.draw(received_item(*byte), Ink::received);
  }
  if (count > 0) {
    page_.mark();
  }
  receive_when_waiting();
}

void FullTermWindow::do_print() {
  {
    const FlagGuard printing(printing_);
    print_captured(page_.captured(), services_.printer, services_.dialogs);
  }
  pop1_->setFocus();
}

/// The window sees its keys before its controls do, and none reaches them: Tab, Space, Enter and Escape
/// are typed characters.
bool FullTermWindow::take_input(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();
      return true;
    case QEvent::KeyPress: {
      const auto facts = KeyFacts::of(*static_cast<QKeyEvent*>(event));
      if (!keys_.key_down(facts) && facts.key == Qt::Key_F8 && !facts.repeated) {
        services_.clicks.run([this] { do_print(); });
      }
      return true;
    }
    case QEvent::KeyRelease:
      static_cast<void>(keys_.key_up(KeyFacts::of(*static_cast<QKeyEvent*>(event))));
      return true;
    case QEvent::InputMethod:
      type(static_cast<QInputMethodEvent*>(event)->commitString());
      event->accept();
      return true;
    default:
      return false;
  }
}

bool FullTermWindow::event(QEvent* event) {
  return take_input(event) || QWidget::event(event);
}

bool FullTermWindow::eventFilter(QObject* receiver, QEvent* event) {
  return take_input(event) || QWidget::eventFilter(receiver, event);
}

void FullTermWindow::resizeEvent(QResizeEvent* event) {
  pop1_->setGeometry(0, 0, width(), height() - twips_to_pixels(beneath_area, *this));
  sink_->setGeometry(0, 0, 1, 1);
  const int left = twips_to_pixels(note_left, *this);
  place_beneath(*nul_note_, left, 1050);
  place_beneath(*address_note_, left, 850);
  place_beneath(*lines_note_, left, 650);
  // Right of what stands before them, however large the desktop's letters are.
  const auto after = [this, left](const QWidget& before, int place) {
    return std::max(before.geometry().right() + left, twips_to_pixels(place, *this));
  };
  place_beneath(*clear_button_, after(*lines_note_, button_left), 950);
  place_beneath(*print_button_, after(*clear_button_, second_button_left), 950);
  QWidget::resizeEvent(event);
}

void FullTermWindow::place_beneath(QWidget& widget, int left, int above_bottom) {
  widget.adjustSize();
  widget.move(left, height() - twips_to_pixels(above_bottom, *this));
}

void FullTermWindow::show_item(std::string_view item) {
  page_.draw(item, Ink::typed);
}

void FullTermWindow::show_character(char byte) {
  page_.draw(std::string_view(&byte, 1), Ink::typed);
}

void FullTermWindow::draw(std::string_view item, Ink ink) {
  pop1_->add(code_page::from_dos_437(item), ink == Ink::typed ? typed_colour : received_colour);
}

void FullTermWindow::end_line() {
  pop1_->end_line();
}

void FullTermWindow::clear() {
  pop1_->clear();
}
