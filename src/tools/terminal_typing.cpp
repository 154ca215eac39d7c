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

/// Whether a key sends something, or decides what the next ones send. The others move the caret or the focus.
bool concerns_the_line(const KeyFacts& facts) {
  switch (facts.key) {
    case Qt::Key_Delete:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return false;
    case Qt::Key_Alt:
    case Qt::Key_Control:
    case Qt::Key_F9:
    case Qt::Key_F10:
      return true;
    default:
      return !facts.text.isEmpty() || facts.modifiers.testFlag(Qt::AltModifier);
  }
}

}  // namespace

TypingBox::TypingBox(const char* object_name, const QString& accessible_name, Services& services,
                     QWidget* parent)
    : TerminalView(object_name, accessible_name, LongLines::wrap, parent),
      LineTarget(services.link),
      services_(services),
      keys_(*this, TerminalKeys::CaretKeys::tab_and_enter),
      typist_(services.pump.make_ticker(timings::terminal_tick, [this] { type_some(); })) {
  setAttribute(Qt::WA_InputMethodEnabled);
  setInputMethodHints(Qt::ImhMultiLine | Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
}

TypingBox::~TypingBox() = default;

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

/// Runs `action` at once, or, while a pasted text is still going out, after it and all that came since.
void TypingBox::in_turn(std::function<void()> action) {
  if (typist_->running()) {
    waiting_.push_back(std::move(action));
  } else {
    action();
  }
}

void TypingBox::keyPressEvent(QKeyEvent* event) {
  const KeyFacts facts = KeyFacts::of(*event);
  if (typist_->running() && concerns_the_line(facts)) {
    in_turn([this, facts] { keys_.key_down(facts); });
  } else if (!keys_.key_down(facts)) {
    edit(*event);
  }
}

void TypingBox::keyReleaseEvent(QKeyEvent* event) {
  in_turn([this, facts = KeyFacts::of(*event)] { keys_.key_up(facts); });
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

void TypingBox::focusInEvent(QFocusEvent* event) {
  in_turn([this, held = QGuiApplication::queryKeyboardModifiers()] { keys_.focus_gained(held); });
  TerminalView::focusInEvent(event);
}

void TypingBox::focusOutEvent(QFocusEvent* event) {
  in_turn([this] { keys_.focus_lost(); });
  TerminalView::focusOutEvent(event);
}

/// Another screen works with the line now: what was still to be typed must not get between its frames.
void TypingBox::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) {  // a minimized window still shows this screen
    to_type_.clear();
    waiting_.clear();
    typist_->stop();
  }
  TerminalView::hideEvent(event);
}

void TypingBox::type(const QString& text) {
  services_.clicks.run([this, text] {
    if (!isVisible()) {
      return;  // it has waited for a pause or a box, and another screen works with the line now
    }
    in_turn([this, text] { to_type_ = with_enter(text); });
    if (!typist_->running()) {
      type_some();
    }
  });
}

void TypingBox::type_some() {
  const QString piece = to_type_.left(characters_a_piece);
  to_type_.remove(0, piece.size());
  if (!keys_.characters(piece)) {
    to_type_.clear();
  }
  while (to_type_.isEmpty() && !waiting_.empty()) {
    const std::function<void()> next = std::move(waiting_.front());
    waiting_.pop_front();
    next();
  }
  if (to_type_.isEmpty()) {
    typist_->stop();
  } else {
    typist_->start();
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
  menu.addAction(paste_it, this, &TypingBox::paste)->setEnabled(services_.link.comopen());
}
