#include "tools/drawn_text.h"

#include "shell/code_page.h"
#include "shell/fonts.h"
#include "support/picture.h"

#include <QAccessible>
#include <QImage>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace {

struct DisplayBench {
  DrawnText display{"protdisp", QStringLiteral("Replies"), fonts::fixed(9.75)};

  explicit DisplayBench(QSize cells = {40, 10}) {
    display.resize(display.size_for(cells.width(), cells.height()));
    display.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&display));
  }

  QImage picture() { return display.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

  /// The first and the last pixel column with ink in a cell.
  std::pair<int, int> ink_span(int line, int column) {
    const QImage image = picture();
    const QRect area = pixels_of(image, display.cell(line, column));
    std::pair span(area.right(), area.left());
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        if (image.pixelColor(x, y).lightness() < 128) {
          span = {std::min(span.first, x), std::max(span.second, x)};
        }
      }
    }
    return span;
  }

  /// Whether the picture holds, within the cells from `column` on, a pixel that `is` accepts.
  template <typename Predicate>
  bool any_pixel(int line, int column, int columns, Predicate is) {
    const QImage image = picture();
    QRectF area = display.cell(line, column);
    area.setWidth(area.width() * columns);
    const QRect pixels = pixels_of(image, area).intersected(image.rect());
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
      for (int x = pixels.left(); x <= pixels.right(); ++x) {
        if (is(image.pixelColor(x, y))) {
          return true;
        }
      }
    }
    return false;
  }

  bool inked(int line, int column) {
    return any_pixel(line, column, 1, [](const QColor& colour) { return colour.lightness() < 128; });
  }

  QAccessibleTextInterface* access() {
    return QAccessible::queryAccessibleInterface(&display)->textInterface();
  }
};

bool strongly_red(const QColor& colour) {
  return colour.red() > 200 && colour.green() < 80 && colour.blue() < 80;
}

bool strongly_green(const QColor& colour) {
  return colour.green() > 200 && colour.red() < 80 && colour.blue() < 80;
}

}  // namespace

TEST(drawn_text, keeps_its_lines_and_gives_them_as_text) {
  DisplayBench bench;
  EXPECT_EQ(bench.display.text(), QString());
  bench.display.print(QStringLiteral("one"), Qt::black);
  bench.display.add(QStringLiteral("tw"), Qt::black);
  bench.display.add(QStringLiteral("o"), Qt::blue);
  EXPECT_EQ(bench.display.text(), QStringLiteral("one\ntwo"));
  EXPECT_EQ(bench.display.lines().back().size(), 2U);
  bench.display.clear();
  EXPECT_EQ(bench.display.text(), QString());
}

TEST(drawn_text, paints_each_line_in_its_own_colour_on_white) {
  DisplayBench bench;
  bench.display.print(QStringLiteral("HHHH"), Qt::red);
  bench.display.print(QStringLiteral("HHHH"), QColor(0x00, 0xFF, 0x00));
  bench.display.print(QStringLiteral("HHHH"), Qt::black);
  EXPECT_TRUE(bench.any_pixel(0, 0, 4, strongly_red));
  EXPECT_FALSE(bench.any_pixel(0, 0, 4, strongly_green));
  EXPECT_TRUE(bench.any_pixel(1, 0, 4, strongly_green));
  EXPECT_FALSE(bench.any_pixel(2, 0, 4, strongly_red));
  EXPECT_TRUE(bench.inked(2, 0));
  EXPECT_EQ(bench.picture().pixelColor(bench.display.cell(5, 20).center().toPoint()), QColor(Qt::white));
}

TEST(drawn_text, leaves_no_ink_after_clear) {
  DisplayBench bench;
  bench.display.print(QStringLiteral("gone"), Qt::black);
  bench.display.clear();
  EXPECT_FALSE(bench.any_pixel(0, 0, 40, [](const QColor& colour) { return colour != QColor(Qt::white); }));
}

TEST(drawn_text, keeps_columns_true_beside_characters_of_another_font) {
  DisplayBench bench;
  bench.display.print(code_page::from_dos_437("\x01\xDB\x9E\xE0\xFE") + QStringLiteral(" | |"), Qt::black);
  bench.display.print(QStringLiteral("      | |"), Qt::black);
  for (const int column : {6, 8}) {
    EXPECT_EQ(bench.ink_span(0, column), bench.ink_span(1, column)) << column;
  }
  EXPECT_FALSE(bench.inked(0, 7));
}

TEST(drawn_text, brings_what_is_printed_last_into_view) {
  DisplayBench bench({10, 3});
  EXPECT_EQ(bench.display.verticalScrollBar()->maximum(), 0);
  for (int line = 0; line < 5; ++line) {
    bench.display.print(QStringLiteral("line %1").arg(line), Qt::black);
  }
  EXPECT_TRUE(QRectF(bench.display.viewport()->rect()).contains(bench.display.cell(4, 0)));
  EXPECT_FALSE(QRectF(bench.display.viewport()->rect()).contains(bench.display.cell(0, 0)));
  bench.display.clear();
  EXPECT_EQ(bench.display.verticalScrollBar()->maximum(), 0);
}

TEST(drawn_text, scrolls_to_the_end_of_a_long_line) {
  DisplayBench bench({10, 3});
  bench.display.print(QString(200, u'x'), Qt::black);
  QScrollBar* const bar = bench.display.horizontalScrollBar();
  bar->setValue(bar->maximum());
  EXPECT_TRUE(QRectF(bench.display.viewport()->rect()).contains(bench.display.cell(0, 199)));
}

TEST(drawn_text, shows_as_many_columns_and_rows_as_its_size_was_asked_for) {
  DisplayBench bench({20, 6});
  const QRectF view = bench.display.viewport()->rect();
  EXPECT_TRUE(view.contains(bench.display.cell(5, 19)));
  EXPECT_FALSE(view.contains(bench.display.cell(6, 20)));
}

TEST(drawn_text, tells_its_text_to_assistive_clients) {
  DisplayBench bench;
  bench.display.print(QStringLiteral("Unit 005 TIMEOUT"), Qt::black);
  bench.display.print(QStringLiteral("Unit 006^BA^C"), Qt::red);
  auto* const interface = QAccessible::queryAccessibleInterface(&bench.display);
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Replies"));
  EXPECT_EQ(interface->text(QAccessible::Value), bench.display.text());
  EXPECT_TRUE(interface->state().readOnly);
  QAccessibleTextInterface* const text = interface->textInterface();
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->text(0, text->characterCount()), bench.display.text());
  int start = 0;
  int end = 0;
  EXPECT_EQ(text->textAtOffset(18, QAccessible::LineBoundary, &start, &end),
            QStringLiteral("Unit 006^BA^C\n"));
  EXPECT_EQ(text->attributes(20, &start, &end), QStringLiteral("color:rgb(255,0,0);"));
  EXPECT_EQ(start, 17);
  EXPECT_EQ(end, 30);
}

TEST(drawn_text, tells_where_each_character_stands) {
  DisplayBench bench;
  bench.display.print(QStringLiteral("first"), Qt::black);
  bench.display.print(QStringLiteral("second"), Qt::black);
  for (const int offset : {0, 4, 6, 11}) {
    const QPoint middle = bench.access()->characterRect(offset).center();
    EXPECT_EQ(bench.access()->offsetAtPoint(middle), offset);
  }
  const QPoint beside = bench.access()->characterRect(4).center() + QPoint(100, 0);
  EXPECT_EQ(bench.access()->offsetAtPoint(beside), -1);
}
