#pragma once

#include "access/transfers.h"

#include <QLabel>

/// The line in which a transfer counts. Hidden while nothing is transferred, it keeps its place, so that
/// showing it needs no new layout.
class ProgressLine : public QLabel {
  Q_OBJECT

 public:
  ProgressLine(const char* object_name, QWidget* parent);

  /// Shows its texts at once.
  [[nodiscard]] StatusLine status();
};
