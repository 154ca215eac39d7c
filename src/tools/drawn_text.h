#pragma once

#include <QAbstractScrollArea>
#include <QColor>
#include <QString>

#include <vector>

/// A piece of a drawn line, in one colour.
struct DrawnPiece {
  QString text;
  QColor colour;
};
using DrawnLine = std::vector<DrawnPiece>;

/// A white drawing surface for coloured lines of fixed-pitch text. It paints them from what it keeps, each
/// character in its own cell, and tells them to assistive clients as it would any read-only text, with the
/// place and the colour of every character. What does not fit can be scrolled; new text is kept in view.
class DrawnText : public QAbstractScrollArea {
  Q_OBJECT

 public:
  /// @param object_name the display's name in the program ("protdisp")
  /// @param accessible_name the words beside it
  /// @param text_font a fixed-pitch one; characters it does not have are drawn from another, in their cells
  DrawnText(const char* object_name, const QString& accessible_name, const QFont& text_font,
            QWidget* parent = nullptr);

  /// Removes all text.
  void clear();
  /// Continues the last line. No character of the text breaks it.
  void add(const QString& text, const QColor& colour);
  void end_line();
  /// A whole line: add() and end_line().
  void print(const QString& text, const QColor& colour);

  /// All lines, the one begun last without a line break at its end.
  [[nodiscard]] QString text() const;
  /// Line by line, from 0; the last one is the line that add() continues, empty after end_line().
  [[nodiscard]] const std::vector<DrawnLine>& lines() const { return lines_; }

  /// The cell of a character in the viewport, whether text stands there or not.
  [[nodiscard]] QRectF cell(int line, int column) const;
  /// The size at which so many columns and rows show without scrolling.
  [[nodiscard]] QSize size_for(int columns, int rows) const;
  [[nodiscard]] QSize minimumSizeHint() const override { return size_for(8, 2); }
  [[nodiscard]] QSize sizeHint() const override { return size_for(79, 30); }

  /// Brings a line into view.
  void show_line(int line);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] int line_height() const;
  [[nodiscard]] qreal column_width() const;
  void follow_text();

  std::vector<DrawnLine> lines_ = std::vector<DrawnLine>(1);
  int length_ = 0;   ///< of text(), in characters
  int longest_ = 0;  ///< line, in characters
};

/// The length of a line in characters.
[[nodiscard]] int length_of(const DrawnLine& line);
