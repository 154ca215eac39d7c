// The look of the terminal's boxes, by their ink.

#include "tools/terminal_view.h"

#include "support/picture.h"
#include "support/window_bench.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// The ink within a cell: grey levels, row by row, of the cell's own width and height.
QImage cell_of(TerminalView& view, int offset) {
  const QImage picture = view.viewport()->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
  return picture.copy(pixels_of(picture, view.cell(offset)));
}

/// The first and the last pixel column with ink in the middle of a cell.
std::pair<int, int> ink_span(TerminalView& view, int offset) {
  const QImage cell = cell_of(view, offset);
  std::pair span(cell.width(), -1);
  for (int y = 0; y < cell.height(); ++y) {
    for (int x = 0; x < cell.width(); ++x) {
      if (qGray(cell.pixel(x, y)) < 128) {
        span = {std::min(span.first, x), std::max(span.second, x)};
      }
    }
  }
  return span;
}

bool inked(TerminalView& view, int offset) {
  return ink_span(view, offset).second >= 0;
}

bool whole_in_view(TerminalView& view, int offset) {
  return QRectF(view.viewport()->rect()).contains(view.cell(offset));
}

/// Every character that may come from another font than letters and digits do.
std::string all_but_ascii() {
  std::string bytes;
  for (int code = 1; code < 256; ++code) {
    if (code < ' ' || code > '~') {
      bytes += static_cast<char>(code);
    }
  }
  return bytes;
}

struct ViewBench {
  TerminalView view;

  explicit ViewBench(TerminalView::LongLines long_lines, QSize cells = {24, 6})
      : view("box", QStringLiteral("Box"), long_lines) {
    view.resize(view.size_for(cells.width(), cells.height()));
    view.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
  }
};

constexpr std::array both_kinds{TerminalView::LongLines::scroll, TerminalView::LongLines::wrap};

}  // namespace

TEST(terminal_view, keeps_columns_true_beside_characters_of_another_font) {
  for (const TerminalView::LongLines kind : both_kinds) {
    ViewBench bench(kind, {170, 6});
    const std::string others = all_but_ascii();
    const int bar = static_cast<int>(others.size()) + 1;
    bench.view.append({others + " | |", std::string(others.size(), ' ') + " | |"});
    bench.view.move_caret(0);
    const int line_length = static_cast<int>(others.size()) + 4;
    for (const int offset : {bar, bar + 2}) {
      EXPECT_TRUE(inked(bench.view, offset)) << offset;
      EXPECT_EQ(ink_span(bench.view, offset), ink_span(bench.view, offset + line_length + 1)) << offset;
      EXPECT_TRUE(whole_in_view(bench.view, offset)) << offset;
    }
    EXPECT_FALSE(inked(bench.view, bar + 1));
  }
}

TEST(terminal_view, a_long_run_of_text_stays_in_its_cells_to_the_last_column) {
  for (const TerminalView::LongLines kind : both_kinds) {
    ViewBench bench(kind, {80, 4});
    std::string bars;
    while (bars.size() < 78) {
      bars += "| ";
    }
    bench.view.append({bars + "|"});
    for (int column = 0; column <= 78; column += 2) {
      EXPECT_TRUE(inked(bench.view, column)) << column;
      EXPECT_TRUE(whole_in_view(bench.view, column)) << column;
      if (column > 0) {
        EXPECT_FALSE(inked(bench.view, column - 1)) << column;
      }
    }
  }
}

TEST(terminal_view, shows_as_many_whole_columns_and_rows_as_its_size_was_asked_for) {
  for (const TerminalView::LongLines kind : both_kinds) {
    ViewBench bench(kind);
    const std::string row = "Mg" + std::string(21, ' ') + "g";
    bench.view.append({row, row, row, row, row, row});
    bench.view.move_caret(0);
    const int last_row = 5 * (static_cast<int>(row.size()) + 1);
    // A letter that reaches below the line is as whole in the last corner as in the first row.
    EXPECT_TRUE(whole_in_view(bench.view, last_row + 23));
    const auto dark = [&](int offset) {
      const QImage cell = cell_of(bench.view, offset);
      int count = 0;
      for (int y = 0; y < cell.height(); ++y) {
        for (int x = 0; x < cell.width(); ++x) {
          count += 255 - qGray(cell.pixel(x, y));
        }
      }
      return count;
    };
    EXPECT_GT(dark(1), 255);
    EXPECT_NEAR(dark(last_row + 23), dark(1), dark(1) / 4);
    EXPECT_NEAR(dark(last_row + 1), dark(1), dark(1) / 4);
  }
}

TEST(terminal_view, boxes_of_the_terminal_screen_show_twenty_columns_and_three_rows_in_the_smallest_window) {
  WindowBench bench;
  bench.window.resize(bench.window.minimumSize());
  bench.open(ScreenCode::term);
  QCoreApplication::processEvents();
  for (const char* const name : {"Text7", "Text1"}) {
    auto& view = *bench.find<TerminalView>(name);
    const std::string row(20, 'g');
    view.append({row, row, row});
    view.move_caret(0);
    for (const int offset : {0, 19, 21, 42, 42 + 19}) {
      EXPECT_TRUE(whole_in_view(view, offset)) << name << offset;
      EXPECT_TRUE(inked(view, offset)) << name << offset;
    }
  }
}
