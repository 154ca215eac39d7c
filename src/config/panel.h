#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
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

/// The words beside a box.
QLabel* make_label(const QString& words, QWidget* box);

}  // namespace panel
