#pragma once

#include "config/panel.h"
#include "shell/screen.h"

class QPushButton;
class TextBox;

/// What the commands of the screen try.
enum class DiagGroup { reader, displays, leds, relay_and_speaker, operating_mode, sense_inputs_and_protocol };

/// Exercises a connected reader by hand: displays, LEDs, relay, speaker, modes, sense inputs, protocol.
class DiagScreen : public Screen {
 public:
  DiagScreen(Services& services, QWidget* parent);

 private:
  QWidget* identification_group();
  panel::Group command_group(DiagGroup group, const QString& title, QPushButton* first = nullptr);
  void identify();

  TextBox* identification_;
};
