#pragma once

#include "shell/text_box.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QString>

/// The parts that the reader configuration screens are laid out with.
namespace panel {

/// The grid of a screen, its first row the heading over all `columns`.
QGridLayout* make_grid(QWidget& screen, const QString& heading, int columns);

/// A titled frame with a grid of its own.
struct Group {
  QGroupBox* frame;
  QGridLayout* grid;
};
Group make_group(const QString& title, QWidget* parent);

/// Gives a layout the narrow margins and gaps of these screens.
void make_compact(QLayout& layout);

/// A box on a row of a frame, with the words that name it before it.
TextBox* add_box(const Group& group, int row, const char* object_name, const QString& words,
                 int maximum_length, KeyFilter filter);

}  // namespace panel
