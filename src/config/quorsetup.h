#pragma once

#include "shell/screen.h"

class TextBox;

/// The setup of the Quor readers: logging, printing and the two ages.
class QuorSetupScreen : public Screen {
 public:
  QuorSetupScreen(Services& services, QWidget* parent);

 private:
  QWidget* general_group();
  QWidget* age_group();
  void set_ages();

  TextBox* age_1_;
  TextBox* age_2_;
};
