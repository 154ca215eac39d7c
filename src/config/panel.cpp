#include "config/panel.h"

#include "shell/fonts.h"

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
  grid->setSpacing(spacing);
  grid->setContentsMargins(frame_margin, frame_margin, frame_margin, frame_margin);
  return {frame, grid};
}

QLabel* panel::make_label(const QString& words, QWidget* box) {
  auto* const label = new QLabel(words, box->parentWidget());
  label->setBuddy(box);
  return label;
}
