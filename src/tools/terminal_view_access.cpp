#include "tools/terminal_view_access.h"

#include "tools/terminal_typing.h"

#include <QAccessibleWidget>

namespace {

class TerminalViewAccess : public QAccessibleWidget,
                           public QAccessibleTextInterface,
                           public QAccessibleEditableTextInterface {
 public:
  explicit TerminalViewAccess(TerminalView* view)
      : QAccessibleWidget(view, QAccessible::EditableText),
        view_(*view),
        typing_box_(qobject_cast<TypingBox*>(view)) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) {
      return static_cast<QAccessibleTextInterface*>(this);
    }
    if (type == QAccessible::EditableTextInterface && typing_box_ != nullptr) {
      return static_cast<QAccessibleEditableTextInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.readOnly = typing_box_ == nullptr;
    state.editable = typing_box_ != nullptr;
    return state;
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? view_.text() : QAccessibleWidget::text(kind);
  }
  void setText(QAccessible::Text kind, const QString& text) override {
    if (kind == QAccessible::Value && typing_box_ != nullptr) {
      typing_box_->type(text);
    } else {
      QAccessibleWidget::setText(kind, text);
    }
  }

  // The viewport and the scroll bars are parts of the box, not things of their own.
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

  void selection(int index, int* start, int* end) const override {
    *start = index == 0 ? view_.selection_begin() : 0;
    *end = index == 0 ? view_.selection_end() : 0;
  }
  [[nodiscard]] int selectionCount() const override { return view_.has_selection() ? 1 : 0; }
  void addSelection(int start, int end) override { view_.select(start, end); }
  void removeSelection(int /*index*/) override { view_.move_caret(view_.caret()); }
  void setSelection(int /*index*/, int start, int end) override { view_.select(start, end); }
  [[nodiscard]] int cursorPosition() const override { return view_.caret(); }
  void setCursorPosition(int position) override { view_.move_caret(position); }

  [[nodiscard]] QString text(int start, int end) const override { return view_.content().text(start, end); }
  [[nodiscard]] int characterCount() const override { return view_.content().size(); }

  /// A line is asked for again and again while it is read out: it must not cost the whole text.
  [[nodiscard]] QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                     int* end) const override {
    const ByteText& content = view_.content();
    if (boundary == QAccessible::LineBoundary || boundary == QAccessible::ParagraphBoundary) {
      const int line = content.place_of(offset).line;
      *start = content.line_start(line);
      *end = std::min(*start + content.length_of(line) + 1, content.size());  // with its line break
      return content.text(*start, *end);
    }
    if (boundary == QAccessible::CharBoundary) {
      *start = std::clamp(offset, 0, content.size());
      *end = std::min(*start + 1, content.size());
      return content.text(*start, *end);
    }
    return QAccessibleTextInterface::textAtOffset(offset, boundary, start, end);
  }

  [[nodiscard]] QRect characterRect(int offset) const override {
    const QRect cell = view_.cell(offset).toAlignedRect();
    return {view_.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
  }
  [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
    return view_.offset_at(view_.viewport()->mapFromGlobal(QPointF(point)));
  }
  void scrollToSubstring(int start, int /*end*/) override { view_.show_offset(start); }
  [[nodiscard]] QString attributes(int offset, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return offset < 0 || offset > *end ? QString() : QStringLiteral("font-family:\"Courier New\";");
  }

  // What is put in goes out on the line at once, wherever it was meant to stand.
  void insertText(int /*offset*/, const QString& text) override { typing_box_->type(text); }
  void deleteText(int start, int end) override { typing_box_->remove(start, end); }
  void replaceText(int start, int end, const QString& text) override {
    typing_box_->remove(start, end);
    typing_box_->type(text);
  }

 private:
  TerminalView& view_;
  TypingBox* typing_box_;
};

}  // namespace

QAccessibleInterface* make_terminal_view_access(const QString& /*class_name*/, QObject* object) {
  auto* const view = qobject_cast<TerminalView*>(object);
  return view != nullptr ? new TerminalViewAccess(view) : nullptr;
}
