#include "shell/menu_state.h"

#include <gtest/gtest.h>

namespace {

constexpr int last = MenuState::entry_count - 1;

}  // namespace

TEST(menu_state, up_with_nothing_highlighted_and_the_first_entry_selected_does_nothing) {
  MenuState menu;
  menu.move_highlight(-1);
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_EQ(menu.pointer(), 0);
  EXPECT_FALSE(menu.highlight_active());
}

TEST(menu_state, down_with_nothing_highlighted_and_the_last_entry_selected_does_nothing) {
  MenuState menu;
  menu.select(last);
  menu.nohighlights();
  menu.move_highlight(1);
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_FALSE(menu.highlight_active());
}

TEST(menu_state, down_from_entry_13_highlights_entry_14_and_stays_there) {
  MenuState menu;
  menu.mouse_over_entry(12);
  menu.move_highlight(1);
  EXPECT_EQ(menu.hovered(), last);
  menu.move_highlight(1);
  EXPECT_EQ(menu.hovered(), last);
  EXPECT_EQ(menu.pointer(), last);
}

TEST(menu_state, moving_onto_the_selected_entry_leaves_no_highlight_and_the_next_step_starts_there) {
  MenuState menu;
  menu.select(5);
  menu.nohighlights();
  menu.mouse_over_entry(4);
  menu.move_highlight(1);
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_EQ(menu.pointer(), 5);
  EXPECT_TRUE(menu.highlight_active());
  menu.move_highlight(1);
  EXPECT_EQ(menu.hovered(), 6);
}

TEST(menu_state, mouse_over_the_selected_entry_moves_the_pointer_but_highlights_nothing) {
  MenuState menu;
  menu.select(3);
  menu.nohighlights();
  menu.mouse_over_entry(7);
  EXPECT_EQ(menu.hovered(), 7);
  menu.mouse_over_entry(3);
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_EQ(menu.pointer(), 3);
}

TEST(menu_state, mouse_over_the_background_takes_the_highlight_and_its_flag_away) {
  MenuState menu;
  menu.mouse_over_entry(7);
  menu.mouse_over_background();
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_EQ(menu.pointer(), 0);
  EXPECT_FALSE(menu.highlight_active());
}

TEST(menu_state, mouse_over_the_background_without_a_highlight_leaves_the_pointer) {
  MenuState menu;
  menu.select(2);  // the pointer has not followed yet
  menu.mouse_over_background();
  EXPECT_EQ(menu.pointer(), 0);
}

TEST(menu_state, after_a_reset_the_first_entry_is_selected_and_the_highlight_counts_as_active) {
  MenuState menu;
  menu.select(9);
  menu.mouse_over_entry(4);
  menu.reset();
  EXPECT_EQ(menu.selected(), 0);
  EXPECT_EQ(menu.pointer(), 0);
  EXPECT_EQ(menu.hovered(), std::nullopt);
  EXPECT_TRUE(menu.highlight_active());
}
