#pragma once

#include "tools/byte_text.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <algorithm>

class QMenu;

/// A multi-line box of fixed-pitch text as bytes of the terminals' code page: one cell a byte, control
/// characters as pictures of themselves. However long a line or the text is, showing more of it costs the
/// same. The text can be selected and copied, by mouse and keyboard, and is told to assistive clients.
class TerminalView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class LongLines {
    scroll,  ///< a horizontal scroll bar
    wrap,    ///< they go on in the next row
  };

  /// @param object_name the box's name in the program ("Text1")
  /// @param accessible_name the words beside it
  TerminalView(const char* object_name, const QString& accessible_name, LongLines long_lines,
               QWidget* parent = nullptr);

  /// Adds text at the end. The caret goes there, unless something is selected: that stays, and in view.
  void append(const ReceivedLines& more);
  void clear();

  [[nodiscard]] const ByteText& content() const { return content_; }
  /// All of it, lines separated by LF.
  [[nodiscard]] QString text() const { return content_.text(); }

  /// Between the characters, as an offset in the text.
  [[nodiscard]] int caret() const { return caret_; }
  [[nodiscard]] int selection_begin() const { return std::min(caret_, anchor_); }
  [[nodiscard]] int selection_end() const { return std::max(caret_, anchor_); }
  [[nodiscard]] bool has_selection() const { return caret_ != anchor_; }
  void select(int anchor, int caret);
  void move_caret(int offset) { select(offset, offset); }
  void select_all() { select(0, content_.size()); }
  void copy() const;

  /// The cell of a character in the viewport, in view or not.
  [[nodiscard]] QRectF cell(int offset) const;
  /// The place between characters that is nearest to a point of the viewport.
  [[nodiscard]] int offset_at(QPointF point) const;
  void show_offset(int offset);

  [[nodiscard]] QSize size_for(int columns, int rows) const;
  [[nodiscard]] QSize minimumSizeHint() const override { return size_for(20, 3); }
  [[nodiscard]] QSize sizeHint() const override { return size_for(80, 12); }

 protected:
  // Changes to the text; the caret goes behind them.
  void insert(int offset, std::string_view bytes);
  void break_line(int offset);
  void erase(int begin, int end);

  /// What the context menu offers.
  virtual void fill_menu(QMenu& menu);

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  struct RowPlace {
    int line = 0;
    int first_column = 0;
  };

  [[nodiscard]] bool wraps() const { return long_lines_ == LongLines::wrap; }
  [[nodiscard]] int row_count() const;
  [[nodiscard]] int row_of(ByteText::Place place) const;
  [[nodiscard]] RowPlace place_of_row(int row) const;
  void wrap_from(int line);
  void text_changed(int first_line);
  void fit_scroll_bars();
  void paint_row(QPainter& painter, int row) const;
  void paint_caret(QPainter& painter) const;
  void restart_caret();
  [[nodiscard]] int offset_by_rows(int rows) const;
  [[nodiscard]] int offset_after(int key, Qt::KeyboardModifiers modifiers) const;
  [[nodiscard]] int word_edge(int offset, int step) const;
  void tell_inserted(int offset, int end);
  void tell_removed(int begin, int end);

  ByteText content_;
  LongLines long_lines_;
  int wrap_columns_ = 1;
  std::vector<int> first_rows_ = std::vector<int>(1);  ///< of each line, when long lines wrap
  int caret_ = 0;
  int anchor_ = 0;
  bool caret_shown_ = false;
  QBasicTimer blink_;
  QBasicTimer drag_scroll_;
};
