#include "shell/menu_state.h"

void MenuState::nohighlights() {
  hovered_.reset();
  pointer_ = selected_;
}

void MenuState::mouse_over_entry(int entry) {
  highlight_active_ = true;
  if (hovered_ != entry) {
    highlight(entry);
  }
}

void MenuState::mouse_over_background() {
  if (highlight_active_) {
    nohighlights();
  }
  highlight_active_ = false;
}

void MenuState::move_highlight(int step) {
  const int entry = hovered_.value_or(selected_) + step;
  if (entry < 0 || entry >= entry_count) {
    return;
  }
  highlight_active_ = true;
  highlight(entry);
}

void MenuState::highlight(int entry) {
  pointer_ = entry;
  hovered_.reset();
  if (entry != selected_) {
    hovered_ = entry;
  }
}

void MenuState::reset() {
  *this = MenuState{};
  highlight_active_ = true;
}
