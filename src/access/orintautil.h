#pragma once

#include "access/transfers.h"
#include "shell/screen.h"

class AccessWindow;
class QGroupBox;
class QLabel;
class QVBoxLayout;
class ScheduleWindow;

/// Access lists, schedules and logs of the stand-alone access readers: their transfers and their editors.
class OrintautilScreen : public Screen {
  Q_OBJECT

 public:
  OrintautilScreen(Services& services, QWidget* parent);

  void entered() override;

 private:
  QGroupBox* access_list_group();
  QGroupBox* log_group();
  QGroupBox* schedules_group();
  QGroupBox* note();

  AccessWindow* access_;
  ScheduleWindow* schedules_;
  QLabel* progress_;
  StatusLine status_;
};
