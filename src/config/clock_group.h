#pragma once

#include "shell/services.h"

#include <QGroupBox>

#include <functional>

class QLabel;
class QPushButton;

/// The clocks of the PC and of the reader with "Set Date/Time" and "Read Date/Time", as three screens have
/// them.
class ClockGroup : public QGroupBox {
  Q_OBJECT

 public:
  /// @param reading how the screen's "Read Date/Time" goes about it
  ClockGroup(Services& services, const ClockReading& reading, QWidget* parent);

 private:
  QPushButton* add_button(const QString& caption, const char* object_name, std::function<void()> action);
  void show_texts();

  Services& services_;
  QLabel* current_;
  QLabel* reader_;
};
