#pragma once

#include "link/reader_clock.h"

#include <QGroupBox>

class QLabel;
class QPushButton;

/// The clock of the PC and that of the reader, as three screens show them, with the buttons of the screen.
class ClockGroup : public QGroupBox {
  Q_OBJECT

 public:
  ClockGroup(const ReaderClock& clock, QPushButton* set, QPushButton* read, QWidget* parent);

 private:
  void show_texts();

  const ReaderClock& clock_;
  QLabel* current_;
  QLabel* reader_;
};
