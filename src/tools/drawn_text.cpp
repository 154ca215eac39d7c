#include "tools/drawn_text.h"

#include "tools/cell_text.h"
#include "tools/drawn_text_access.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr int margin = 4;  // pixels between the frame and the text

}  // namespace

int length_of(const DrawnLine& line) {
  qsizetype length = 0;
  for (const DrawnPiece& piece : line) {
    length += piece.text.size();
  }
  return static_cast<int>(length);
}

DrawnText::DrawnText(const char* object_name, const QString& accessible_name, const QFont& text_font,
                     QWidget* parent)
    : QAbstractScrollArea(parent) {
  QAccessible::installFactory(make_drawn_text_access);  // installed once, however often it is asked for
  setObjectName(QLatin1String(object_name));
  setAccessibleName(accessible_name);
  setFont(text_font);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  viewport()->setMouseTracking(true);
}

void DrawnText::clear() {
  const QString removed = QAccessible::isActive() ? text() : QString();
  lines_.assign(1, {});
  length_ = 0;
  longest_ = 0;
  if (!removed.isEmpty()) {
    QAccessibleTextRemoveEvent event(this, 0, removed);
    QAccessible::updateAccessibility(&event);
  }
  follow_text();
  viewport()->update();
}

void DrawnText::add(const QString& text, const QColor& colour) {
  DrawnLine& line = lines_.back();
  if (!line.empty() && line.back().colour == colour) {
    line.back().text += text;
  } else {
    line.push_back({text, colour});
  }
  const int position = length_;
  length_ += static_cast<int>(text.size());
  longest_ = std::max(longest_, length_of(line));
  if (QAccessible::isActive()) {
    QAccessibleTextInsertEvent event(this, position, text);
    QAccessible::updateAccessibility(&event);
  }
  follow_text();
  const QRectF changed = cell(static_cast<int>(lines_.size()) - 1, 0);
  viewport()->update(0, static_cast<int>(changed.top()) - 1, viewport()->width(), line_height() + 2);
}

void DrawnText::end_line() {
  lines_.emplace_back();
  if (QAccessible::isActive()) {
    QAccessibleTextInsertEvent event(this, length_, QStringLiteral("\n"));
    QAccessible::updateAccessibility(&event);
  }
  ++length_;
  follow_text();
}

void DrawnText::print(const QString& text, const QColor& colour) {
  add(text, colour);
  end_line();
}

QString DrawnText::text() const {
  QString all;
  all.reserve(length_);
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    if (index > 0) {
      all += u'\n';
    }
    for (const DrawnPiece& piece : lines_[index]) {
      all += piece.text;
    }
  }
  return all;
}

int DrawnText::line_height() const {
  return fontMetrics().height();
}

qreal DrawnText::column_width() const {
  return QFontMetricsF(font()).horizontalAdvance(u'0');
}

QRectF DrawnText::cell(int line, int column) const {
  return {margin - horizontalScrollBar()->value() + column * column_width(),
          qreal(margin - verticalScrollBar()->value() + line * line_height()), column_width(),
          qreal(line_height())};
}

QSize DrawnText::size_for(int columns, int rows) const {
  const int around = 2 * (margin + frameWidth());
  return {static_cast<int>(std::ceil(columns * column_width())) + around, rows * line_height() + around};
}

void DrawnText::show_line(int line) {
  const int top = line * line_height();
  const int value = verticalScrollBar()->value();
  verticalScrollBar()->setValue(
      std::clamp(value, top + line_height() + 2 * margin - viewport()->height(), std::max(top, 0)));
}

/// Fits the scroll bars to the text and keeps the last line that holds text in view.
void DrawnText::follow_text() {
  const int count = static_cast<int>(lines_.size());
  const int rows = count > 1 && lines_.back().empty() ? count - 1 : count;
  const int width = static_cast<int>(std::ceil(longest_ * column_width())) + 2 * margin;
  const int height = rows * line_height() + 2 * margin;
  horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(static_cast<int>(std::ceil(column_width())));
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(line_height());
  show_line(rows - 1);
}

void DrawnText::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), Qt::white);
  painter.setFont(font());
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    QRectF place = cell(static_cast<int>(index), 0);
    if (place.bottom() < event->rect().top() || place.top() > event->rect().bottom()) {
      continue;
    }
    for (const DrawnPiece& piece : lines_[index]) {
      painter.setPen(piece.colour);
      draw_cells(painter, piece.text, place);
      place.translate(column_width() * static_cast<qreal>(piece.text.size()), 0);
    }
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().highlight().color(), 1));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
  }
}

void DrawnText::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  follow_text();
}

void DrawnText::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void DrawnText::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}
