// The caret and the selection of the box: keys, mouse, clipboard.

#include "tools/terminal_view.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

namespace {

constexpr int drag_scroll_interval = 50;  // ms

}  // namespace

void TerminalView::select(int anchor, int caret) {
  const bool had_selection = has_selection();
  anchor_ = std::clamp(anchor, 0, content_.size());
  caret_ = std::clamp(caret, 0, content_.size());
  restart_caret();
  show_offset(caret_);
  viewport()->update();
  if (QAccessible::isActive()) {
    if (has_selection() || had_selection) {
      QAccessibleTextSelectionEvent event(this, selection_begin(), selection_end());
      event.setCursorPosition(caret_);
      QAccessible::updateAccessibility(&event);
    } else {
      QAccessibleTextCursorEvent event(this, caret_);
      QAccessible::updateAccessibility(&event);
    }
  }
}

void TerminalView::copy() const {
  if (has_selection()) {
    QApplication::clipboard()->setText(content_.text(selection_begin(), selection_end()));
  }
}

/// The offset some rows below the caret's, in its column.
int TerminalView::offset_by_rows(int rows) const {
  const QRectF place = cell(caret_);
  return offset_at({place.left(), place.center().y() + rows * place.height()});
}

/// The edge of the word next to an offset, to the left (-1) or to the right (1).
int TerminalView::word_edge(int offset, int step) const {
  const auto in_word = [this, step](int place) {
    const int character = step < 0 ? place - 1 : place;
    const QString text = content_.text(character, character + 1);
    return !text.isEmpty() && !text.front().isSpace();
  };
  const int end = step < 0 ? 0 : content_.size();
  while (offset != end && !in_word(offset)) {
    offset += step;
  }
  while (offset != end && in_word(offset)) {
    offset += step;
  }
  return offset;
}

/// Where a key takes the caret; -1: it is no key of the caret.
int TerminalView::offset_after(int key, Qt::KeyboardModifiers modifiers) const {
  const bool far = modifiers.testFlag(Qt::ControlModifier);
  const ByteText::Place place = content_.place_of(caret_);
  switch (key) {
    case Qt::Key_Left:
      return far ? word_edge(caret_, -1) : std::max(0, caret_ - 1);
    case Qt::Key_Right:
      return far ? word_edge(caret_, 1) : std::min(content_.size(), caret_ + 1);
    case Qt::Key_Up:
      return offset_by_rows(-1);
    case Qt::Key_Down:
      return offset_by_rows(1);
    case Qt::Key_PageUp:
      return offset_by_rows(-verticalScrollBar()->pageStep());
    case Qt::Key_PageDown:
      return offset_by_rows(verticalScrollBar()->pageStep());
    case Qt::Key_Home:
      return far ? 0 : content_.line_start(place.line);
    case Qt::Key_End:
      return far ? content_.size() : content_.offset_of({place.line, content_.length_of(place.line)});
    default:
      return -1;
  }
}

void TerminalView::keyPressEvent(QKeyEvent* event) {
  const int target = offset_after(event->key(), event->modifiers());
  if (target >= 0) {
    select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : target, target);
  } else if (event->matches(QKeySequence::Copy)) {
    copy();
  } else if (event->matches(QKeySequence::SelectAll)) {
    select_all();
  } else {
    event->ignore();
  }
}

void TerminalView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    const int offset = offset_at(event->position());
    select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : offset, offset);
  }
}

void TerminalView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) {
    select(anchor_, offset_at(event->position()));
    // Beyond the edge the text scrolls under the mouse.
    if (viewport()->rect().contains(event->position().toPoint())) {
      drag_scroll_.stop();
    } else if (!drag_scroll_.isActive()) {
      drag_scroll_.start(drag_scroll_interval, this);
    }
  }
}

void TerminalView::mouseReleaseEvent(QMouseEvent* event) {
  drag_scroll_.stop();
  QClipboard* const clipboard = QApplication::clipboard();
  if (event->button() == Qt::LeftButton && has_selection() && clipboard->supportsSelection()) {
    clipboard->setText(content_.text(selection_begin(), selection_end()), QClipboard::Selection);
  }
}

void TerminalView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    const int offset = offset_at(event->position());
    const int begin = word_edge(std::min(offset + 1, content_.size()), -1);
    select(begin, word_edge(begin, 1));
  }
}

void TerminalView::fill_menu(QMenu& menu) {
  menu.addAction(QStringLiteral("Copy"), this, &TerminalView::copy)->setEnabled(has_selection());
  menu.addAction(QStringLiteral("Select All"), this, &TerminalView::select_all);
}

void TerminalView::contextMenuEvent(QContextMenuEvent* event) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fill_menu(*menu);
  menu->popup(event->globalPos());
}

void TerminalView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  restart_caret();
}

void TerminalView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  blink_.stop();
  caret_shown_ = false;
  viewport()->update();
}

/// The caret shows at once where it has moved to, and blinks from there as the desktop has it.
void TerminalView::restart_caret() {
  caret_shown_ = hasFocus();
  const int flash_time = QApplication::cursorFlashTime();
  if (caret_shown_ && flash_time > 0) {
    blink_.start(flash_time / 2, this);
  }
}

void TerminalView::timerEvent(QTimerEvent* event) {
  if (event->timerId() == blink_.timerId()) {
    caret_shown_ = !caret_shown_;
    viewport()->update(cell(caret_).adjusted(-2, 0, 2, 0).toAlignedRect());
  } else if (event->timerId() == drag_scroll_.timerId()) {
    select(anchor_, offset_at(viewport()->mapFromGlobal(QPointF(QCursor::pos()))));
  } else {
    QAbstractScrollArea::timerEvent(event);
  }
}
