#pragma once

#include <optional>

/// Where the menu's highlight and its pointer image stand. Entries are counted from 0.
class MenuState {
 public:
  static constexpr int entry_count = 14;

  /// The entry of the screen last opened through the menu.
  [[nodiscard]] int selected() const { return selected_; }
  /// The entry highlighted by mouse or keys; never the selected one, and nothing once the highlight is gone.
  [[nodiscard]] std::optional<int> hovered() const { return hovered_; }
  /// The entry at which the pointer image stands.
  [[nodiscard]] int pointer() const { return pointer_; }
  [[nodiscard]] bool highlight_active() const { return highlight_active_; }

  void select(int entry) { selected_ = entry; }
  /// Takes the highlight away and puts the pointer at the selected entry.
  void nohighlights();
  void mouse_over_entry(int entry);
  void mouse_over_background();
  /// Moves the highlight one entry down (+1) or up (-1), from the selected entry when none is highlighted.
  void move_highlight(int step);

  /// As at start-up: the first entry selected.
  void reset();

 private:
  void highlight(int entry);

  int selected_ = 0;
  std::optional<int> hovered_;
  int pointer_ = 0;
  bool highlight_active_ = false;
};
