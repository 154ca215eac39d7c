#pragma once

#include "access/transfers.h"
#include "shell/screen.h"

class AccessWindow;
class ProgressLine;
class QGroupBox;
class ScheduleWindow;

/// Access lists, schedules and logs of the stand-alone access readers: their transfers and their editors.
class OrintaUtilScreen : public Screen {
  Q_OBJECT

 public:
  OrintaUtilScreen(Services& services, QWidget* parent);

  void entered() override;

 private:
  QGroupBox* access_list_group();
  QGroupBox* log_group();
  QGroupBox* schedules_group();
  QGroupBox* note();
  template <typename Window>
  void open_editor(Window*& window) {
    if (window == nullptr) {
      window = new Window(services(), this);
    }
    window->open();
  }

  // Made when they are first asked for: the program's start does not wait for them.
  AccessWindow* access_ = nullptr;
  ScheduleWindow* schedules_ = nullptr;
  ProgressLine* progress_;
  StatusLine status_;
};
