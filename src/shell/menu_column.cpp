#include "shell/menu_column.h"

#include "shell/fonts.h"
#include "shell/twips.h"

#include <QAccessible>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int entry_height = 345;   // twips
constexpr int pointer_left = 150;   // twips
constexpr int pointer_width = 300;  // twips
constexpr int caption_left = pointer_left + pointer_width + 45;

constexpr QColor teal{0x00, 0x80, 0x80};
constexpr QColor normal_colour{0x00, 0x00, 0x00};
constexpr QColor selected_colour{0x00, 0xFF, 0x01};  // not quite pure green: the value is meant
constexpr QColor highlight_colour{0x00, 0x00, 0xFF};

/// The pointer image: a hand-sized arrow towards the caption.
class PointerImage : public QWidget {
 public:
  explicit PointerImage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("pointer"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1, height() * 0.2, -1, -height() * 0.2);
    QPainterPath arrow(area.topLeft() + QPointF(0, area.height() * 0.3));
    arrow.lineTo(area.left() + area.width() * 0.55, area.top() + area.height() * 0.3);
    arrow.lineTo(area.left() + area.width() * 0.55, area.top());
    arrow.lineTo(area.right(), area.center().y());
    arrow.lineTo(area.left() + area.width() * 0.55, area.bottom());
    arrow.lineTo(area.left() + area.width() * 0.55, area.bottom() - area.height() * 0.3);
    arrow.lineTo(area.left(), area.bottom() - area.height() * 0.3);
    arrow.closeSubpath();
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(QColor(0xFF, 0xFF, 0xC0));
    painter.drawPath(arrow);
  }
};

}  // namespace

MenuEntry::MenuEntry(const QString& caption, QWidget* parent)
    : QAbstractButton(parent), text_colour_(normal_colour) {
  setText(caption);
  setObjectName(caption);
  setFont(fonts::serif(10.5));
  setMouseTracking(true);
  setFocusPolicy(Qt::TabFocus);
}

void MenuEntry::set_text_colour(const QColor& colour) {
  if (text_colour_ != colour) {
    text_colour_ = colour;
    update();
  }
}

QSize MenuEntry::sizeHint() const {
  return {twips_to_pixels(caption_left, *this) + fontMetrics().horizontalAdvance(text()) + 4,
          twips_to_pixels(entry_height, *this)};
}

void MenuEntry::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), teal);
  painter.setPen(text_colour_);
  const QRect text_area = rect().adjusted(twips_to_pixels(caption_left, *this), 0, 0, 0);
  painter.drawText(text_area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text());
  if (hasFocus()) {
    painter.setPen(QPen(Qt::white, 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
  }
}

void MenuEntry::enterEvent(QEnterEvent* event) {
  Q_EMIT mouse_over();
  QAbstractButton::enterEvent(event);
}

void MenuEntry::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT mouse_over();
  QAbstractButton::mouseMoveEvent(event);
  event->accept();  // nothing beneath must take it for a move over itself
}

void MenuEntry::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

MenuColumn::MenuColumn(const QStringList& captions, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("menu"));
  setAccessibleName(QStringLiteral("Menu"));
  for (int index = 0; index < captions.size(); ++index) {
    auto* const entry = new MenuEntry(captions[index], this);
    connect(entry, &MenuEntry::clicked, this, [this, index] { Q_EMIT entry_clicked(index); });
    connect(entry, &MenuEntry::mouse_over, this, [this, index] {
      state_.mouse_over_entry(index);
      show_state();
    });
    entries_.push_back(entry);
  }
  pointer_ = new PointerImage(this);
  place_entries();
  show_state();
}

QSize MenuColumn::minimumSizeHint() const {
  QSize size;
  for (const MenuEntry* const entry : entries_) {
    size =
        QSize(std::max(size.width(), entry->sizeHint().width()), size.height() + entry->sizeHint().height());
  }
  return size;
}

void MenuColumn::select(int index) {
  state_.select(index);
  nohighlights();
}

void MenuColumn::nohighlights() {
  state_.nohighlights();
  show_state();
}

void MenuColumn::mouse_over_background() {
  state_.mouse_over_background();
  show_state();
}

void MenuColumn::move_highlight(int step) {
  state_.move_highlight(step);
  show_state();
  QAccessibleEvent walked(entry(state_.pointer()), QAccessible::Focus);
  QAccessible::updateAccessibility(&walked);
}

bool MenuColumn::under_mouse() const {
  return rect().contains(mapFromGlobal(QCursor::pos()));
}

void MenuColumn::reset() {
  state_.reset();
  show_state();
}

/// Stacks the entries without gaps.
void MenuColumn::place_entries() {
  int top = 0;
  for (MenuEntry* const entry : entries_) {
    entry->setGeometry(0, top, width(), twips_to_pixels(entry_height, *this));
    top = entry->geometry().bottom() + 1;
  }
}

void MenuColumn::show_state() {
  for (int index = 0; index < static_cast<int>(entries_.size()); ++index) {
    entry(index)->set_text_colour(index == state_.selected()  ? selected_colour
                                  : index == state_.hovered() ? highlight_colour
                                                              : normal_colour);
    // Not by colour alone.
    entry(index)->setAccessibleDescription(index == state_.selected() ? QStringLiteral("selected")
                                                                      : QString());
  }
  pointer_->setGeometry(twips_to_pixels(pointer_left, *this), entry(state_.pointer())->y(),
                        twips_to_pixels(pointer_width, *this), twips_to_pixels(entry_height, *this));
  pointer_->raise();
}

void MenuColumn::resizeEvent(QResizeEvent* event) {
  place_entries();
  show_state();
  QWidget::resizeEvent(event);
}

void MenuColumn::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), teal);
}

void MenuColumn::leaveEvent(QEvent* event) {
  Q_EMIT mouse_left();
  QWidget::leaveEvent(event);
}
