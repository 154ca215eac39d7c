#pragma once

#include "shell/menu_state.h"
#include "shell/screen.h"

#include <array>

/// Names the screen on show; the numbers are fixed.
enum class ScreenCode {
  none = 0,
  test = 1,
  term = 2,
  com = 3,
  vellsetup = 4,
  orinparam = 5,
  general = 6,
  prottest = 7,
  keshutil = 8,
  orintautil = 9,
  asciichart = 10,
  quorsetup = 11,
  keshsetup = 12,
  diag = 13,
  symbology = 14,
};

/// One entry of the menu and the screen it opens.
struct ScreenEntry {
  const char* caption;
  ScreenCode code;
  Screen* (*create)(Services& services, QWidget* parent);
};

/// The fourteen screens, in the order of the menu.
extern const std::array<ScreenEntry, MenuState::entry_count> screen_table;
