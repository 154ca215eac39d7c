#include "config/panel.h"

#include "shell/fonts.h"

#include <QLabel>

namespace {

constexpr int spacing = 4;
constexpr int frame_margin = 6;

}  // namespace

QGridLayout* panel::make_grid(QWidget& screen, const QString& heading, int columns) {
  auto* const label = new QLabel(heading, &screen);
  label->setFont(fonts::serif(16));
  auto* const grid = new QGridLayout(&screen);
  grid->setSpacing(spacing);
  grid->addWidget(label, 0, 0, 1, columns, Qt::AlignHCenter);
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
  auto* const label = new QLabel(words, group.frame);
  auto* const box = new TextBox(object_name, words, maximum_length, filter, group.frame);
  label->setBuddy(box);
  box->set_width_in_characters(maximum_length);
  group.grid->addWidget(label, row, 0);
  group.grid->addWidget(box, row, 1);
  group.grid->setColumnStretch(1, 1);
  return box;
}
