#pragma once

#include "config/setup_screen.h"

class OptionGroup;
class TextBox;

/// The setup of the stand-alone access readers. Its "Record Length" box is the record length of the access
/// list download too.
class OrinParamScreen : public SetupScreen {
 public:
  OrinParamScreen(Services& services, QWidget* parent);

 private:
  QWidget* general_group();
  QWidget* mode_group();
  QWidget* password_group();
  void set_general();
  void set_mode();

  TextBox* record_length_;
  TextBox* relay_time_;
  TextBox* red_led_time_;
  OptionGroup* mode_;
};
