#pragma once

#include "config/panel.h"
#include "shell/screen.h"

#include <initializer_list>

/// What the commands of the screen act on.
enum class VellGroup { sense_inputs, keyboard, power_up, good_read, reader, data_format, speed };
struct VellCommand;

/// The parameters of a reader, one command a button. A click only sends: nothing is read back.
class VellSetupScreen : public Screen {
 public:
  VellSetupScreen(Services& services, QWidget* parent);

 protected:
  [[nodiscard]] QWidget* first_control() const override;

 private:
  /// A frame with the buttons of some groups, each group on rows of its own.
  QWidget* command_frame(const QString& title, std::initializer_list<VellGroup> groups, int columns);
  void add_command(const VellCommand& command, const panel::Group& frame, int row, int column);
};
