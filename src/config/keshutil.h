#pragma once

#include "access/transfers.h"
#include "shell/screen.h"

class QLabel;

/// Copies the records that a Kesh or Quor reader has collected into a file, and erases them in the reader.
class KeshUtilScreen : public Screen {
 public:
  KeshUtilScreen(Services& services, QWidget* parent);

  /// Hides what an earlier upload may have left on show.
  void entered() override;

 private:
  [[nodiscard]] StatusLine status_line();

  QLabel* status_;
};
