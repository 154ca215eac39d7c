#pragma once

#include "config/check_frame.h"
#include "shell/screen.h"

/// Which barcodes and which magstripe tracks a reader reads.
class SymbologyScreen : public Screen {
 public:
  SymbologyScreen(Services& services, QWidget* parent);

 private:
  void add_check_button(CheckFrame& frame, const char* object_name);
  QWidget* track_group();

  CheckFrame barcodes_;
  CheckFrame options_;
};
