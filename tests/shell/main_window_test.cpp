#include "shell/main_window.h"

#include "support/window_bench.h"

TEST(main_window, starts_on_the_communication_screen_with_the_first_entry_green_and_pointed_at) {
  WindowBench bench;
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
  EXPECT_TRUE(bench.find("com")->isVisible());
  EXPECT_EQ(bench.window.menu().entry(0)->text_colour(), QColor(0x00, 0xFF, 0x01));
  EXPECT_EQ(bench.find("pointer")->y(), 0);
  EXPECT_EQ(bench.port.opened_with, std::vector<std::string>{"1:9600,N,8,1"});
}
