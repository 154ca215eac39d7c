#pragma once

#include "shell/screen.h"

class QPushButton;
class TextBox;

/// Exercises a connected reader by hand: displays, LEDs, relay, speaker, modes, sense inputs, protocol.
class DiagScreen : public Screen {
 public:
  DiagScreen(Services& services, QWidget* parent);

 private:
  QWidget* identification_group();
  QWidget* command_group(int group, QPushButton* first = nullptr);
  void identify();

  TextBox* identification_;
};
