#pragma once

#include "shell/text_box.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QString>

#include <initializer_list>

class OptionGroup;
class QCheckBox;
class QPushButton;

/// The parts that the reader configuration screens are laid out with.
namespace panel {

/// The grid of a screen, its first row the heading over all `columns`.
QGridLayout* make_grid(QWidget& screen, const QString& title, int columns);

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

/// A check box on a row of a frame, unchecked.
QCheckBox* add_check(const Group& group, int row, const char* object_name, const QString& caption);

// Several buttons of a screen are captioned "Set": assistive clients get the frame's title beside it.

/// The buttons of a frame, side by side on its last row.
void add_buttons(const Group& group, int row, std::initializer_list<QPushButton*> buttons);

/// Puts the button of a frame of options at their right.
void put_beside_options(OptionGroup& options, QPushButton* button);

/// Takes the frame away from options that stand within another one.
void make_frameless(OptionGroup& options);

}  // namespace panel
