#include "shell/option_group.h"

#include "shell/option_access.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QRadioButton>

OptionGroup::OptionGroup(const char* object_name, const QString& caption, const QStringList& options,
                         int chosen, Qt::Orientation orientation, QWidget* parent)
    : QGroupBox(caption, parent),
      layout_(new QBoxLayout(orientation == Qt::Vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight,
                             this)) {
  QAccessible::installFactory(make_option_access);  // installed once, however often it is asked for
  setObjectName(QLatin1String(object_name));
  for (int index = 0; index < options.size(); ++index) {
    add_option(options[index], index);
  }
  if (chosen >= 0) {
    option(chosen)->setChecked(true);
  }
}

/// The library does so only once the focus has been in the group.
void OptionGroup::lead_tab_to_the_choice() {
  for (QRadioButton* const option : options_) {
    const Qt::FocusPolicy policy = option->focusPolicy();
    option->setFocusPolicy(
        static_cast<Qt::FocusPolicy>(option->isChecked() ? policy | Qt::TabFocus : policy & ~Qt::TabFocus));
  }
}

void OptionGroup::add_option(const QString& caption, int index) {
  auto* const button = new QRadioButton(caption, this);
  button->setObjectName(QStringLiteral("%1_%2").arg(objectName()).arg(index));
  button->installEventFilter(this);
  group_.addButton(button, index);
  options_.push_back(button);
  layout_->addWidget(button);
  connect(button, &QRadioButton::toggled, this, [this, index](bool on) {
    if (on) {
      lead_tab_to_the_choice();
      Q_EMIT option_chosen(index);
    }
  });
  // A click that changes nothing toggles nothing, and acts all the same.
  connect(button, &QRadioButton::pressed, this,
          [this, button] { chosen_when_pressed_ = button->isChecked(); });
  connect(button, &QRadioButton::clicked, this, [this, index] {
    if (chosen_when_pressed_) {
      Q_EMIT option_chosen(index);
    }
  });
}

int OptionGroup::chosen() const {
  return group_.checkedId();
}

QRadioButton* OptionGroup::option(int index) const {
  return options_.at(static_cast<std::size_t>(index));
}

bool OptionGroup::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
      move_choice(key == Qt::Key_Left ? -1 : 1);
      return true;
    }
  }
  return QGroupBox::eventFilter(receiver, event);
}

void OptionGroup::paintEvent(QPaintEvent* event) {
  if (!isFlat()) {
    QGroupBox::paintEvent(event);
  }
}

void OptionGroup::move_choice(int step) {
  int from = chosen();
  if (from < 0) {
    from = step > 0 ? -1 : count();
  }
  const int to = (from + step + count()) % count();
  option(to)->setFocus(Qt::TabFocusReason);
  option(to)->setChecked(true);
}
