#include "tools/fullterm_page.h"

#include "support/bytes.h"

#include <vector>

namespace {

/// A page as lines of text.
class TestSurface : public PageSurface {
 public:
  std::vector<std::string> lines{""};
  int clears = 0;

  void draw(std::string_view item, Ink /*ink*/) override { lines.back() += item; }
  void end_line() override { lines.emplace_back(); }
  void clear() override {
    lines.assign(1, "");
    ++clears;
  }
};

struct PageBench {
  TestSurface surface;
  FullTermPage page{surface};

  void draw(int count, std::string_view item = "x") {
    for (int index = 0; index < count; ++index) {
      page.draw(item, PageSurface::Ink::typed);
    }
  }
};

}  // namespace

TEST(fullterm_page, seventy_nine_characters_fill_a_line_and_the_next_item_begins_another) {
  PageBench bench;
  bench.draw(79);
  EXPECT_EQ(bench.surface.lines, std::vector<std::string>{std::string(79, 'x')});
  bench.draw(1, "y");
  EXPECT_EQ(bench.surface.lines, (std::vector<std::string>{std::string(79, 'x'), "y"}));
}

TEST(fullterm_page, a_code_that_begins_before_column_79_is_not_broken) {
  PageBench bench;
  bench.draw(78);
  bench.draw(1, "^A");
  bench.draw(1, "y");
  EXPECT_EQ(bench.surface.lines, (std::vector<std::string>{std::string(78, 'x') + "^A", "y"}));
}

TEST(fullterm_page, the_thirtieth_line_break_clears_the_page_and_not_what_was_captured) {
  PageBench bench;
  bench.draw(30 * 79);
  EXPECT_EQ(bench.surface.lines.size(), 30U);
  EXPECT_EQ(bench.surface.clears, 0);
  bench.draw(1, "y");
  EXPECT_EQ(bench.surface.clears, 1);
  EXPECT_EQ(bench.surface.lines, std::vector<std::string>{"y"});
  EXPECT_EQ(bench.page.captured(), std::string(30 * 79, 'x') + "y");
}

TEST(fullterm_page, after_clearing_itself_the_page_takes_thirty_lines_again) {
  PageBench bench;
  bench.draw(60 * 79);
  EXPECT_EQ(bench.surface.clears, 1);
  EXPECT_EQ(bench.surface.lines.size(), 30U);
  bench.draw(1);
  EXPECT_EQ(bench.surface.clears, 2);
}

TEST(fullterm_page, clear_empties_page_and_capture_and_counts_anew) {
  PageBench bench;
  bench.draw(29 * 79 + 40);
  bench.page.clear();
  EXPECT_EQ(bench.page.captured(), "");
  bench.draw(30 * 79);
  EXPECT_EQ(bench.surface.clears, 1);
  EXPECT_EQ(bench.surface.lines.size(), 30U);
}

TEST(fullterm_page, marks_are_captured_and_not_drawn) {
  PageBench bench;
  bench.draw(1, "A");
  bench.page.mark();
  bench.draw(1, "O");
  bench.page.mark();
  EXPECT_TRUE(bytes_equal(bench.page.captured(), "A\xFF\xFFO\xFF\xFF"));
  EXPECT_EQ(bench.surface.lines, std::vector<std::string>{"AO"});
}
