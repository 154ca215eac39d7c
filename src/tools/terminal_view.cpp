#include "tools/terminal_view.h"

#include "shell/code_page.h"
#include "shell/fonts.h"
#include "tools/cell_text.h"
#include "tools/terminal_view_access.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <cmath>

namespace {

constexpr qreal points = 9.75;
constexpr int margin = 3;  // pixels between the frame and the text

qreal column_width(const QWidget& view) {
  return QFontMetricsF(view.font()).horizontalAdvance(u'0');
}

int row_height(const QWidget& view) {
  return view.fontMetrics().height();
}

}  // namespace

TerminalView::TerminalView(const char* object_name, const QString& accessible_name, LongLines long_lines,
                           QWidget* parent)
    : QAbstractScrollArea(parent), long_lines_(long_lines) {
  QAccessible::installFactory(make_terminal_view_access);  // installed once, however often it is asked for
  setObjectName(QLatin1String(object_name));
  setAccessibleName(accessible_name);
  setFont(fonts::fixed(points));
  setFocusPolicy(Qt::StrongFocus);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(wraps() ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setBackgroundRole(QPalette::Base);
}

void TerminalView::append(const ReceivedLines& more) {
  const int first_line = content_.line_count() - 1;
  const int before = content_.size();
  const bool follow = !has_selection();
  content_.append(more);
  text_changed(first_line);
  tell_inserted(before, content_.size());
  if (follow) {
    move_caret(content_.size());
  }
}

void TerminalView::clear() {
  tell_removed(0, content_.size());
  content_.clear();
  text_changed(0);
  move_caret(0);
}

void TerminalView::insert(int offset, std::string_view bytes) {
  content_.insert(offset, bytes);
  text_changed(content_.place_of(offset).line);
  const int end = offset + static_cast<int>(bytes.size());
  tell_inserted(offset, end);
  move_caret(end);
}

void TerminalView::break_line(int offset) {
  content_.break_line(offset);
  text_changed(content_.place_of(offset).line);
  tell_inserted(offset, offset + 1);
  move_caret(offset + 1);
}

void TerminalView::erase(int begin, int end) {
  tell_removed(begin, end);
  content_.erase(begin, end);
  text_changed(content_.place_of(begin).line);
  move_caret(begin);
}

void TerminalView::text_changed(int first_line) {
  if (wraps()) {
    wrap_from(first_line);
  }
  fit_scroll_bars();
  viewport()->update();
}

/// Counts the rows anew from a line on.
void TerminalView::wrap_from(int line) {
  first_rows_.resize(content_.lines().size());
  for (int next = std::max(line, 0) + 1; next < content_.line_count(); ++next) {
    const int length = content_.length_of(next - 1);
    first_rows_[static_cast<std::size_t>(next)] = first_rows_[static_cast<std::size_t>(next) - 1] +
                                                  std::max(1, (length + wrap_columns_ - 1) / wrap_columns_);
  }
}

int TerminalView::row_count() const {
  const int last = content_.line_count() - 1;
  return row_of({last, content_.length_of(last)}) + 1;
}

int TerminalView::row_of(ByteText::Place place) const {
  if (!wraps()) {
    return place.line;
  }
  const int length = content_.length_of(place.line);
  // The end of a line that just fills its row stands at the row's end, not at the start of another.
  const bool at_full_end = place.column == length && length > 0;
  return first_rows_[static_cast<std::size_t>(place.line)] +
         (at_full_end ? place.column - 1 : place.column) / wrap_columns_;
}

TerminalView::RowPlace TerminalView::place_of_row(int row) const {
  if (!wraps()) {
    return {row, 0};
  }
  const auto next = std::upper_bound(first_rows_.begin(), first_rows_.end(), row);
  const int line = static_cast<int>(next - first_rows_.begin()) - 1;
  return {line, (row - first_rows_[static_cast<std::size_t>(line)]) * wrap_columns_};
}

QRectF TerminalView::cell(int offset) const {
  const ByteText::Place place = content_.place_of(offset);
  const int row = row_of(place);
  const int column = place.column - place_of_row(row).first_column - horizontalScrollBar()->value();
  return {margin + column * column_width(*this),
          qreal(margin + (row - verticalScrollBar()->value()) * row_height(*this)), column_width(*this),
          qreal(row_height(*this))};
}

int TerminalView::offset_at(QPointF point) const {
  const int row = static_cast<int>(std::floor((point.y() - margin) / row_height(*this)));
  const RowPlace start = place_of_row(std::clamp(row + verticalScrollBar()->value(), 0, row_count() - 1));
  const int column = static_cast<int>(std::lround((point.x() - margin) / column_width(*this)));
  const int length = content_.length_of(start.line);
  const int row_end = wraps() ? std::min(length, start.first_column + wrap_columns_) : length;
  return content_.offset_of(
      {start.line, std::clamp(start.first_column + column + horizontalScrollBar()->value(),
                              start.first_column, row_end)});
}

QSize TerminalView::size_for(int columns, int rows) const {
  const int around = 2 * (margin + frameWidth());
  const int bar = verticalScrollBar()->sizeHint().width();
  return {static_cast<int>(std::ceil(columns * column_width(*this))) + around + bar,
          rows * row_height(*this) + around + (wraps() ? 0 : bar)};
}

/// The bars count rows and columns.
void TerminalView::fit_scroll_bars() {
  const int columns = std::max(1, static_cast<int>((viewport()->width() - 2 * margin) / column_width(*this)));
  const int rows = std::max(1, (viewport()->height() - 2 * margin) / row_height(*this));
  verticalScrollBar()->setRange(0, std::max(0, row_count() - rows));
  verticalScrollBar()->setPageStep(rows);
  if (!wraps()) {
    horizontalScrollBar()->setRange(0, std::max(0, content_.longest() + 1 - columns));
    horizontalScrollBar()->setPageStep(columns);
  }
}

void TerminalView::show_offset(int offset) {
  const ByteText::Place place = content_.place_of(offset);
  const auto bring_in = [](QScrollBar& bar, int position) {
    bar.setValue(std::clamp(bar.value(), position - bar.pageStep() + 1, position));
  };
  bring_in(*verticalScrollBar(), row_of(place));
  if (!wraps()) {
    bring_in(*horizontalScrollBar(), place.column);
  }
}

void TerminalView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (wraps()) {
    wrap_columns_ = std::max(1, static_cast<int>((viewport()->width() - 2 * margin) / column_width(*this)));
    wrap_from(0);
  }
  fit_scroll_bars();
  show_offset(caret_);
}

void TerminalView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setFont(font());
  const int first = verticalScrollBar()->value();
  const int height = row_height(*this);
  const int top_row = first + std::max(0, event->rect().top() - margin) / height;
  const int bottom_row = first + std::max(0, event->rect().bottom() - margin) / height;
  for (int row = top_row; row <= std::min(bottom_row, row_count() - 1); ++row) {
    paint_row(painter, row);
  }
  if (caret_shown_) {
    paint_caret(painter);
  }
}

void TerminalView::paint_row(QPainter& painter, int row) const {
  const RowPlace start = place_of_row(row);
  const std::string& line = content_.lines()[static_cast<std::size_t>(start.line)];
  const int in_view = static_cast<int>(viewport()->width() / column_width(*this)) + 1;
  const int length = static_cast<int>(line.size());
  const int from = std::min(length, start.first_column + horizontalScrollBar()->value());
  const int to = std::min(length, from + (wraps() ? wrap_columns_ : in_view));
  const int offset = content_.line_start(start.line);
  const auto draw = [&](int begin, int end, QPalette::ColorRole colour) {
    QRectF area = cell(offset + from).translated(column_width(*this) * (begin - from), 0);
    if (colour == QPalette::HighlightedText) {
      QRectF behind = area;
      behind.setWidth(column_width(*this) * (end - begin));
      painter.fillRect(behind, palette().brush(QPalette::Highlight));
    }
    painter.setPen(palette().color(colour));
    const auto bytes =
        std::string_view(line).substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    draw_cells(painter, code_page::from_dos_437(bytes), area);
  };
  const int selected_from = std::clamp(selection_begin() - offset, from, to);
  const int selected_to = std::clamp(selection_end() - offset, from, to);
  if (from < to) {
    draw(from, selected_from, QPalette::Text);
    draw(selected_from, selected_to, QPalette::HighlightedText);
    draw(selected_to, to, QPalette::Text);
  }
}

void TerminalView::paint_caret(QPainter& painter) const {
  QRectF place = cell(caret_);
  place.setWidth(style()->pixelMetric(QStyle::PM_TextCursorWidth, nullptr, this));
  painter.fillRect(place.translated(-place.width() / 2, 0), palette().color(QPalette::Text));
}

void TerminalView::tell_inserted(int offset, int end) {
  if (QAccessible::isActive()) {
    QAccessibleTextInsertEvent event(this, offset, content_.text(offset, end));
    QAccessible::updateAccessibility(&event);
  }
}

void TerminalView::tell_removed(int begin, int end) {
  if (QAccessible::isActive() && begin < end) {
    QAccessibleTextRemoveEvent event(this, begin, content_.text(begin, end));
    QAccessible::updateAccessibility(&event);
  }
}
