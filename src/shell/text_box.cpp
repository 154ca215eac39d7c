#include "shell/text_box.h"

#include "shell/code_page.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

bool is_digit(QChar character) {
  return character >= u'0' && character <= u'9';
}

bool types_a_character(const QKeyEvent& event) {
  const QString text = event.text();
  const bool shortcut = event.modifiers().testFlag(Qt::ControlModifier) &&
                        !event.modifiers().testFlag(Qt::AltModifier);  // both: AltGr
  return !text.isEmpty() && text.front() >= u' ' && event.key() != Qt::Key_Delete && !shortcut;
}

}  // namespace

TextBox::TextBox(const char* object_name, const QString& accessible_name, int maximum_length,
                 KeyFilter filter, QWidget* parent)
    : QLineEdit(parent), filter_(filter) {
  setObjectName(QLatin1String(object_name));
  setAccessibleName(accessible_name);
  if (maximum_length > 0) {
    setMaxLength(maximum_length);
  }
  if (filter != KeyFilter::none) {
    setInputMethodHints(Qt::ImhDigitsOnly);
  }
}

std::string TextBox::bytes() const {
  return code_page::bytes_of(text());
}

void TextBox::set_width_in_characters(int characters) {
  QStyleOptionFrame option;
  initStyleOption(&option);
  const int text_width = fontMetrics().horizontalAdvance(u'0') * (characters + 1);
  const QSize size =
      style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(text_width, sizeHint().height()), this);
  setFixedWidth(size.width());
}

bool TextBox::takes(const QString& typed) const {
  return filter_ == KeyFilter::none || std::all_of(typed.begin(), typed.end(), is_digit);
}

void TextBox::keyPressEvent(QKeyEvent* event) {
  if (filter_ == KeyFilter::digits_no_backspace && event->key() == Qt::Key_Backspace) {
    return;
  }
  if (types_a_character(*event) && !takes(event->text())) {
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void TextBox::inputMethodEvent(QInputMethodEvent* event) {
  if (takes(event->commitString())) {
    QLineEdit::inputMethodEvent(event);
  } else {
    QInputMethodEvent nothing;  // takes what was being composed off the view
    QLineEdit::inputMethodEvent(&nothing);
  }
}

void keep_to_one_line(QLineEdit& box) {
  QObject::connect(&box, &QLineEdit::textChanged, &box, [&box](const QString& text) {
    const QString one_line = QString(text).remove(u'\r').remove(u'\n');
    if (one_line != text) {
      box.setText(one_line);
    }
  });
}
