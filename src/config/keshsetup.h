#pragma once

#include "config/setup_screen.h"

class OptionGroup;
class QCheckBox;
class TextBox;

/// The setup of the data-collection readers.
class KeshSetupScreen : public SetupScreen {
 public:
  KeshSetupScreen(Services& services, QWidget* parent);

 private:
  QWidget* ferro_group();
  QWidget* glint_group();
  QWidget* identifier_group();
  void set_ferro();
  void set_glint();
  void set_identifiers();

  TextBox* ferro_record_length_;
  TextBox* max_records_;
  OptionGroup* ferro_time_stamping_;
  TextBox* glint_record_length_;
  OptionGroup* glint_time_stamping_;
  QCheckBox* id_1_on_;
  QCheckBox* id_2_on_;
  TextBox* id_1_;
  TextBox* id_2_;
};
