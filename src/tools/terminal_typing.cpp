#include "tools/terminal_typing.h"

#include "link/frame.h"
#include "link/timings.h"
#include "shell/services.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <utility>

namespace {

/// So many pasted characters go out at once. At the slowest speed they take an eighth of a second.
constexpr int characters_a_piece = 16;

/// Every way to break a line is one Enter.
QString with_enter(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\r")).replace(u'\n', u'\r');
}

}  // namespace

TypingBox::TypingBox(const char* object_name, const QString& accessible_name, Services& services,
                     QWidget* parent)
    : TerminalView(object_name, accessible_name, LongLines::wrap, parent),
      services_(services),
      keys_(*this, TerminalKeys::CaretKeys::tab_and_enter),
      typist_(services.pump.make_ticker(timings::terminal_tick, [this] { type_some(); })) {
  setAttribute(Qt::WA_InputMethodEnabled);
  setInputMethodHints(Qt::ImhMultiLine | Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
}

TypingBox::~TypingBox() = default;

bool TypingBox::port_open() const {
  return services_.link.comopen();
}

std::uint8_t TypingBox::address_byte() const {
  return services_.link.address_byte();
}

bool TypingBox::send(char byte) {
  return services_.link.write(std::string_view(&byte, 1));
}

/// At the end, wherever the caret stands.
void TypingBox::show_item(std::string_view item) {
  insert(content().size(), item);
}

void TypingBox::show_character(char byte) {
  erase_selection();
  if (byte == wire::cr) {
    break_line(caret());
  } else {
    insert(caret(), std::string_view(&byte, 1));
  }
}

/// Of no use to this screen, and meant: the display of the protocol test is cleared when it is full.
void TypingBox::before_alt_code() {
  services_.checkline();
}

void TypingBox::erase_selection() {
  if (has_selection()) {
    erase(selection_begin(), selection_end());
  }
}

bool TypingBox::event(QEvent* event) {
  // No shortcut of a window takes what is typed here.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  return TerminalView::event(event);
}

/// A key that is typed while a pasted text is still going out goes out after it, and so never in its middle.
bool TypingBox::queue_behind_paste(const QKeyEvent& event) {
  const int key = event.key();
  const bool sends = key == Qt::Key_F9 || key == Qt::Key_F10 || !event.text().isEmpty();
  const bool moves = key == Qt::Key_Delete || key == Qt::Key_Tab || key == Qt::Key_Backtab;
  if (!typist_->running() || !sends || moves || event.modifiers().testFlag(Qt::AltModifier)) {
    return false;
  }
  after_paste_.push_back(KeyFacts::of(event));
  return true;
}

void TypingBox::keyPressEvent(QKeyEvent* event) {
  if (queue_behind_paste(*event)) {
    return;
  }
  if (!keys_.key_down(KeyFacts::of(*event))) {
    edit(*event);
  }
}

void TypingBox::keyReleaseEvent(QKeyEvent* event) {
  if (!keys_.key_up(KeyFacts::of(*event))) {
    TerminalView::keyReleaseEvent(event);
  }
}

/// What is left for the box. The clipboard has its older keys here: the letters belong to the line.
void TypingBox::edit(QKeyEvent& event) {
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  if (event.key() == Qt::Key_Delete && shift) {
    cut();
  } else if (event.key() == Qt::Key_Insert && shift) {
    paste();
  } else if (event.key() == Qt::Key_Delete && has_selection()) {
    erase_selection();
  } else if (event.key() == Qt::Key_Delete && caret() < content().size()) {
    erase(caret(), caret() + 1);
  } else {
    TerminalView::keyPressEvent(&event);
  }
}

void TypingBox::inputMethodEvent(QInputMethodEvent* event) {
  type(event->commitString());
  event->accept();
}

QVariant TypingBox::inputMethodQuery(Qt::InputMethodQuery query) const {
  switch (query) {
    case Qt::ImEnabled:
      return true;
    case Qt::ImCursorRectangle:
      return cell(caret()).translated(viewport()->pos());
    case Qt::ImFont:
      return font();
    default:
      return TerminalView::inputMethodQuery(query);
  }
}

void TypingBox::focusOutEvent(QFocusEvent* event) {
  keys_.focus_lost(event->reason() == Qt::ActiveWindowFocusReason);
  TerminalView::focusOutEvent(event);
}

/// Another screen works with the line now: what was still to be typed must not get between its frames.
void TypingBox::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) {  // a minimized window still shows this screen
    to_type_.clear();
    after_paste_.clear();
    typist_->stop();
  }
  TerminalView::hideEvent(event);
}

void TypingBox::type(const QString& text) {
  to_type_ += with_enter(text);
  if (services_.pump.pausing()) {
    typist_->start();  // its ticks wait for the end of the pause
  } else if (!typist_->running()) {
    type_some();
  }
}

void TypingBox::type_some() {
  const QString piece = to_type_.left(characters_a_piece);
  to_type_.remove(0, piece.size());
  if (!keys_.characters(piece)) {
    to_type_.clear();
  }
  if (!to_type_.isEmpty()) {
    typist_->start();
    return;
  }
  typist_->stop();
  for (const KeyFacts& key : std::exchange(after_paste_, {})) {
    keys_.key_down(key);
  }
}

void TypingBox::cut() {
  copy();
  erase_selection();
}

void TypingBox::paste() {
  type(QApplication::clipboard()->text());
}

void TypingBox::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* const clipboard = QApplication::clipboard();
  if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
    move_caret(offset_at(event->position()));
    type(clipboard->text(QClipboard::Selection));
  }
  TerminalView::mouseReleaseEvent(event);
}

void TypingBox::fill_menu(QMenu& menu) {
  menu.addAction(QStringLiteral("Cut"), this, &TypingBox::cut)->setEnabled(has_selection());
  TerminalView::fill_menu(menu);
  const auto paste_it = QStringLiteral("Paste");
  menu.addAction(paste_it, this, &TypingBox::paste)->setEnabled(port_open());
}
