#pragma once

#include "config/check_frame.h"
#include "shell/screen.h"

class TextBox;

/// The setup of the Quor readers: logging, printing and the two ages.
class QuorSetupScreen : public Screen {
 public:
  QuorSetupScreen(Services& services, QWidget* parent);

 private:
  QWidget* age_group();
  void set_ages();

  CheckFrame general_;
  TextBox* age_1_;
  TextBox* age_2_;
};
