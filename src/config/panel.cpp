#include "config/panel.h"

#include "shell/labels.h"
#include "shell/option_group.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace {

constexpr int spacing = 4;
constexpr int frame_margin = 6;

}  // namespace

QGridLayout* panel::make_grid(QWidget& screen, const QString& title, int columns) {
  auto* const grid = new QGridLayout(&screen);
  grid->setSpacing(spacing);
  grid->addWidget(heading(title), 0, 0, 1, columns, Qt::AlignHCenter);
  for (int column = 0; column < columns; ++column) {
    grid->setColumnStretch(column, 1);
  }
  return grid;
}

panel::Group panel::make_group(const QString& title, QWidget* parent) {
  auto* const frame = new QGroupBox(title, parent);
  auto* const grid = new QGridLayout(frame);
  make_compact(*grid);
  return {frame, grid};
}

void panel::make_compact(QLayout& layout) {
  layout.setSpacing(spacing);
  layout.setContentsMargins(frame_margin, frame_margin, frame_margin, frame_margin);
}

TextBox* panel::add_box(const Group& group, int row, const char* object_name, const QString& words,
                        int maximum_length, KeyFilter filter) {
  auto* const box = new TextBox(object_name, words, maximum_length, filter, group.frame);
  box->set_width_in_characters(maximum_length);
  keep_to_one_line(*box);
  group.grid->addWidget(label_for(box), row, 0);
  group.grid->addWidget(box, row, 1, Qt::AlignLeft);
  group.grid->setColumnStretch(1, 1);
  return box;
}

void panel::add_buttons(const Group& group, int row, std::initializer_list<QPushButton*> buttons) {
  auto* const line = new QHBoxLayout;
  for (QPushButton* const button : buttons) {
    line->addWidget(button, 0, Qt::AlignBottom);
    button->setAccessibleDescription(group.frame->title());
  }
  line->addStretch();
  group.grid->addLayout(line, row, 0, 1, 2);
  group.grid->setRowStretch(row, 1);
}

QCheckBox* panel::add_check(const Group& group, int row, const char* object_name, const QString& caption) {
  auto* const check = new QCheckBox(caption, group.frame);
  check->setObjectName(QLatin1String(object_name));
  group.grid->addWidget(check, row, 0, 1, 2);
  return check;
}

void panel::make_frameless(OptionGroup& options) {
  options.setFlat(true);
  options.setContentsMargins(0, 0, 0, 0);
  options.frame_layout()->setSpacing(spacing);
  options.frame_layout()->setContentsMargins(0, 0, 0, 0);
}

void panel::put_beside_options(OptionGroup& options, QPushButton* button) {
  auto* const column = new QVBoxLayout;
  column->setSpacing(spacing);
  for (int index = 0; index < options.count(); ++index) {
    options.frame_layout()->removeWidget(options.option(index));
    column->addWidget(options.option(index));
  }
  options.frame_layout()->setDirection(QBoxLayout::LeftToRight);
  make_compact(*options.frame_layout());
  options.frame_layout()->addLayout(column, 1);
  options.frame_layout()->addWidget(button, 0, Qt::AlignBottom);
  button->setAccessibleDescription(options.title());
}
