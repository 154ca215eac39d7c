#include "tools/asciichart.h"

#include "shell/code_page.h"
#include "support/picture.h"
#include "support/window_bench.h"
#include "tools/drawn_text.h"

#include <QAccessible>
#include <QImage>

#include <set>

namespace {

struct ChartBench : WindowBench {
  ChartBench() { open(ScreenCode::asciichart); }

  DrawnText* chart() { return find<DrawnText>("chart"); }
  QImage picture() {
    return chart()->viewport()->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
  }
};

/// Where the character of a code stands in its row.
int column_of(int code) {
  return code < 32 ? 8 : 10 + (code / 32 - 1) * 9 + 7;
}

/// @param darkness of a pixel that counts, of 255
bool has_ink(const QImage& picture, const QRectF& cell, int darkness) {
  const QRect area = pixels_of(picture, cell);
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (255 - qGray(picture.pixel(x, y)) > darkness) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

TEST(asciichart, the_first_row_begins_with_code_0_and_the_last_ends_with_code_255) {
  const auto rows = chart_rows();
  EXPECT_EQ(rows.front(),
            "000 00 ^@ 032 20   064 40 @ 096 60 ` 128 80 \x80 160 A0 \xA0 192 C0 \xC0 224 E0 \xE0 ");
  EXPECT_EQ(rows.back(),
            "031 1F ^_ 063 3F ? 095 5F _ 127 7F \x7F 159 9F \x9F 191 BF \xBF 223 DF \xDF 255 FF \xFF ");
  EXPECT_EQ(rows.at(1).substr(0, 10), "001 01 ^A ");
}

TEST(asciichart, every_code_stands_once_in_its_row_and_column) {
  const auto rows = chart_rows();
  for (int code = 0; code < 256; ++code) {
    const std::string& row = rows.at(static_cast<std::size_t>(code % 32));
    const char expected = static_cast<char>(code < 32 ? code + 64 : code);
    EXPECT_EQ(row.at(static_cast<std::size_t>(column_of(code))), expected) << code;
  }
}

TEST(asciichart, entering_draws_an_empty_line_and_the_rows_in_dos_characters) {
  ChartBench bench;
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::asciichart);
  QString expected = QStringLiteral("\n");
  for (const std::string& row : chart_rows()) {
    expected += code_page::from_dos_437(row) + u'\n';
  }
  EXPECT_EQ(bench.chart()->text(), expected);
  EXPECT_TRUE(expected.contains(QStringLiteral("225 E1 \u00DF ")));
  EXPECT_TRUE(expected.contains(QStringLiteral("219 DB \u2588 ")));
}

TEST(asciichart, entering_twice_draws_the_same_chart) {
  ChartBench bench;
  const QString first = bench.chart()->text();
  bench.open(ScreenCode::com);
  bench.open(ScreenCode::asciichart);
  EXPECT_EQ(bench.chart()->text(), first);
}

TEST(asciichart, sends_nothing) {
  ChartBench bench;
  EXPECT_TRUE(bench.port.writes.empty());
}

TEST(asciichart, all_of_it_is_in_view) {
  ChartBench bench;
  const QRectF view = bench.chart()->viewport()->rect();
  EXPECT_TRUE(view.contains(bench.chart()->cell(1, 0)));
  EXPECT_TRUE(view.contains(bench.chart()->cell(32, 72)));
}

TEST(asciichart, every_character_but_the_blanks_is_drawn_in_its_own_cell) {
  ChartBench bench;
  const QImage picture = bench.picture();
  const std::set<int> blanks{32, 255};
  for (int code = 0; code < 256; ++code) {
    const int line = code % 32 + 1;
    EXPECT_EQ(has_ink(picture, bench.chart()->cell(line, column_of(code)).adjusted(1, 0, -1, 0), 20),
              blanks.count(code) == 0)
        << code;
    // Nothing reaches the middle of the gap behind the character.
    QRectF gap = bench.chart()->cell(line, column_of(code) + 1);
    gap = QRectF(gap.center().x(), gap.top() + 3, 1, gap.height() - 6);
    EXPECT_FALSE(has_ink(picture, gap, 100)) << code;
  }
}

TEST(asciichart, columns_are_true_in_every_row) {
  ChartBench bench;
  const QImage picture = bench.picture();
  // The same digit gives the same picture at the same place, row by row.
  const auto cut = [&](int line, int column) {
    return picture.copy(pixels_of(picture, bench.chart()->cell(line, column).adjusted(1, 0, -1, 0)));
  };
  for (int line = 2; line <= 10; ++line) {
    EXPECT_EQ(cut(line, 0), cut(1, 0)) << line;    // the hundreds of the first column
    EXPECT_EQ(cut(line, 64), cut(1, 64)) << line;  // and of the last one
  }
}

TEST(asciichart, the_chart_is_told_to_assistive_clients) {
  ChartBench bench;
  auto* const interface = QAccessible::queryAccessibleInterface(bench.chart());
  EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("ASCII Chart"));
  EXPECT_EQ(interface->textInterface()->text(1, 19), QStringLiteral("000 00 ^@ 032 20  "));
}

TEST(asciichart, fits_the_smallest_window) {
  ChartBench bench;
  const QSize smallest = bench.find("asciichart")->minimumSizeHint();
  EXPECT_LE(smallest.width(), 576);
  EXPECT_LE(smallest.height(), 540);
}
