#pragma once

#include "shell/screen.h"

/// The terminal: what is typed goes out at once, what arrives is shown.
class TermScreen : public Screen {
 public:
  TermScreen(Services& services, QWidget* parent) : Screen("term", services, parent) {}
};
