#include "tools/drawn_text_access.h"

#include "tools/drawn_text.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace {

/// Where a character of the whole text stands; `column` is the line's length for its line break.
struct Place {
  int line = 0;
  int column = 0;
};

class DrawnTextAccess : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit DrawnTextAccess(DrawnText* display)
      : QAccessibleWidget(display, QAccessible::EditableText), display_(*display) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    return state;
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? display_.text() : QAccessibleWidget::text(kind);
  }

  // The viewport and the scroll bars are parts of the display, not things of their own.
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

  // Nothing can be selected or edited, and there is no caret.
  void selection(int /*index*/, int* start, int* end) const override { *start = *end = 0; }
  [[nodiscard]] int selectionCount() const override { return 0; }
  void addSelection(int /*start*/, int /*end*/) override {}
  void removeSelection(int /*index*/) override {}
  void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
  [[nodiscard]] int cursorPosition() const override { return characterCount(); }
  void setCursorPosition(int position) override { display_.show_line(place_of(position).line); }

  [[nodiscard]] QString text(int start, int end) const override {
    return display_.text().mid(start, end - start);
  }
  [[nodiscard]] int characterCount() const override { return static_cast<int>(display_.text().size()); }

  [[nodiscard]] QRect characterRect(int offset) const override {
    const Place place = place_of(offset);
    const QRect cell = display_.cell(place.line, place.column).toAlignedRect();
    return {display_.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
  }

  [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
    const QPointF spot = display_.viewport()->mapFromGlobal(point);
    const QRectF origin = display_.cell(0, 0);
    const int line = static_cast<int>((spot.y() - origin.top()) / origin.height());
    const int column = static_cast<int>((spot.x() - origin.left()) / origin.width());
    if (spot.x() < origin.left() || spot.y() < origin.top() || line >= line_count() ||
        column >= length_at(line)) {
      return -1;
    }
    int offset = column;
    for (int before = 0; before < line; ++before) {
      offset += length_at(before) + 1;
    }
    return offset;
  }

  void scrollToSubstring(int start, int /*end*/) override { display_.show_line(place_of(start).line); }

  /// The colour of the character, and the range of characters that share it.
  [[nodiscard]] QString attributes(int offset, int* start, int* end) const override {
    const Place place = place_of(offset);
    int piece_start = offset - place.column;
    for (const DrawnPiece& piece : display_.lines().at(static_cast<std::size_t>(place.line))) {
      const int piece_end = piece_start + static_cast<int>(piece.text.size());
      if (offset < piece_end) {
        *start = piece_start;
        *end = piece_end;
        return QStringLiteral("color:rgb(%1,%2,%3);")
            .arg(piece.colour.red())
            .arg(piece.colour.green())
            .arg(piece.colour.blue());
      }
      piece_start = piece_end;
    }
    *start = offset;
    *end = std::min(offset + 1, characterCount());
    return {};
  }

 private:
  [[nodiscard]] int line_count() const { return static_cast<int>(display_.lines().size()); }
  [[nodiscard]] int length_at(int line) const {
    return length_of(display_.lines().at(static_cast<std::size_t>(line)));
  }

  [[nodiscard]] Place place_of(int offset) const {
    Place place{0, std::max(offset, 0)};
    while (place.line + 1 < line_count() && place.column > length_at(place.line)) {
      place.column -= length_at(place.line) + 1;
      ++place.line;
    }
    place.column = std::min(place.column, length_at(place.line));
    return place;
  }

  DrawnText& display_;
};

}  // namespace

QAccessibleInterface* make_drawn_text_access(const QString& /*class_name*/, QObject* object) {
  auto* const display = qobject_cast<DrawnText*>(object);
  return display != nullptr ? new DrawnTextAccess(display) : nullptr;
}
