#pragma once

#include "shell/screen.h"

class ProgressLine;

/// Copies the records that a Kesh or Quor reader has collected into a file, and erases them in the reader.
class KeshUtilScreen : public Screen {
 public:
  KeshUtilScreen(Services& services, QWidget* parent);

  /// Hides what an earlier upload may have left on show.
  void entered() override;

 private:
  ProgressLine* progress_;
};
