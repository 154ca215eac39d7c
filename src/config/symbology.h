#pragma once

#include "config/check_frame.h"
#include "shell/screen.h"

/// Which barcodes and which magstripe tracks a reader reads.
class SymbologyScreen : public Screen {
 public:
  SymbologyScreen(Services& services, QWidget* parent);

 private:
  QWidget* check_group(const QString& title, std::span<const CheckCommand> commands, const char* button_name);
  QWidget* track_group();
};
