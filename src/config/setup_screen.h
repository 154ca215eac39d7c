#pragma once

#include "config/reader_setup.h"
#include "config/setup_values.h"
#include "shell/screen.h"

/// A pair of options in a titled frame with a "Set" button.
struct SwitchGroup {
  const char* title;
  const char* object_name;  ///< of the frame; its button is named after it: set_…
  const char* on;
  const char* off;
  int chosen;  ///< at the start: 0 the first, 1 the other
  const SetupKind& kind;
  const Switch& values;
};

/// A screen whose buttons send settings that the reader acknowledges.
class SetupScreen : public Screen {
 public:
  SetupScreen(const char* object_name, Services& services, QWidget* parent);

 protected:
  void run(const SetupKind& kind, const SetupSteps& steps) { setup_.run(kind, steps); }
  /// @param group must live as long as the screen
  QWidget* switch_group(const SwitchGroup& group);

 private:
  ReaderSetup setup_;
};
