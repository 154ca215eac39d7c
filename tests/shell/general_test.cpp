#include "shell/general.h"

#include "support/window_bench.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTextBlock>

#include <vector>

namespace {

struct HelpBench : WindowBench {
  HelpBench() { open(ScreenCode::general); }

  DocumentView* view() { return find<DocumentView>("help"); }
  QScrollBar* bar() { return view()->verticalScrollBar(); }

  std::vector<QTextBlock> headings() {
    std::vector<QTextBlock> found;
    for (QTextBlock block = view()->document()->begin(); block.isValid(); block = block.next()) {
      if (block.blockFormat().headingLevel() > 0) {
        found.push_back(block);
      }
    }
    return found;
  }

  /// What stands under the heading, until the next one, on one line.
  QString section(const char* heading) {
    QString text;
    bool inside = false;
    for (QTextBlock block = view()->document()->begin(); block.isValid(); block = block.next()) {
      if (block.blockFormat().headingLevel() > 0) {
        inside = block.text() == QLatin1String(heading);
      } else if (inside) {
        text += block.text() + u' ';
      }
    }
    return text.simplified();
  }

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(bench_focus(), key, modifiers);
  }
  QWidget* bench_focus() { return window.focusWidget(); }
};

QTextCharFormat format_of(const QTextBlock& block) {
  return block.begin().fragment().charFormat();
}

}  // namespace

TEST(general, the_document_has_its_title_and_sections_in_order) {
  HelpBench bench;
  QStringList headings;
  for (const QTextBlock& block : bench.headings()) {
    headings << block.text();
  }
  EXPECT_EQ(headings.join(u'|').toStdString(),
            "General Information on the TARVOSTEST Program|Communications|Vell Setup|Orin/Orinta Setup|"
            "Orin/Orinta Access List Support|Orin/Orinta File Formats|Terminal Mode|Vell Hardware Test|"
            "Diagnostics|Protocol Test");
}

TEST(general, the_title_is_dark_blue_and_the_sections_are_red_bold_and_underlined) {
  HelpBench bench;
  const std::vector<QTextBlock> headings = bench.headings();
  EXPECT_EQ(format_of(headings.at(0)).foreground().color(), QColor(0x00, 0x00, 0x80));
  for (std::size_t index = 1; index < headings.size(); ++index) {
    const QTextCharFormat format = format_of(headings.at(index));
    EXPECT_EQ(format.foreground().color(), QColor(0xFF, 0x00, 0x00));
    EXPECT_TRUE(format.font().bold());
    EXPECT_TRUE(format.font().underline());
  }
}

TEST(general, headings_and_text_are_in_times_new_roman) {
  HelpBench bench;
  EXPECT_EQ(bench.view()->document()->defaultFont().families().first(), QStringLiteral("Times New Roman"));
  for (QTextBlock block = bench.view()->document()->begin(); block.isValid(); block = block.next()) {
    if (!block.text().isEmpty()) {
      EXPECT_EQ(format_of(block).font().resolve(bench.view()->document()->defaultFont()).families().first(),
                QStringLiteral("Times New Roman"))
          << block.text().toStdString();
    }
  }
}

TEST(general, every_section_tells_what_it_must) {
  HelpBench bench;
  struct Row {
    const char* heading;
    std::vector<const char*> told;
  };
  const std::vector<Row> rows{
      {"Communications", {"9600,8,N", "protocol mode", "Network Mode", "before you use any command"}},
      {"Vell Setup",
       {"no automatic verification", "only at its own address", "127, programs all readers",
        "After changing a reader\u2019s address, enter the new one"}},
      {"Orin/Orinta Setup",
       {"record size", "relay time", "logging", "date and time", "Vell mode", "Accumulate mode",
        "must be set here before any download or upload"}},
      {"Orin/Orinta Access List Support", {"access list", "schedules", "set the record length"}},
      {"Orin/Orinta File Formats",
       {"1 to 40 employee ID", "41 to 70 employee name", "71 to 72 schedule number", "1 to 2 schedule number",
        "4 to 5 associated schedule", "7 to 62 Monday to Sunday", "hhmmhhmm",
        "longer than 18 characters cannot be downloaded into current readers"}},
      {"Terminal Mode",
       {"\u201C^\u201D plus a letter", "F10 sends the reader address", "F9 sends a NULL",
        "127 and above are shown as DOS characters"}},
      {"Vell Hardware Test", {"profile", "\u201CVelltest\u201D", "c:\\tarvos\\velltest.txt"}},
      {"Diagnostics", {"speaker", "LEDs", "Reader Identification String"}},
      {"Protocol Test", {"RS-422 network"}},
  };
  for (const Row& row : rows) {
    const QString section = bench.section(row.heading);
    for (const char* const told : row.told) {
      EXPECT_TRUE(section.contains(QString::fromUtf8(told))) << row.heading << ": " << told;
    }
  }
}

TEST(general, page_keys_home_and_end_scroll) {
  HelpBench bench;
  ASSERT_EQ(bench.bench_focus(), bench.view());
  ASSERT_GT(bench.bar()->maximum(), 0);
  bench.press(Qt::Key_PageDown);
  const int one_page = bench.bar()->value();
  EXPECT_GT(one_page, bench.view()->viewport()->height() / 2);
  bench.press(Qt::Key_End);
  EXPECT_EQ(bench.bar()->value(), bench.bar()->maximum());
  bench.press(Qt::Key_PageUp);
  EXPECT_LT(bench.bar()->value(), bench.bar()->maximum());
  bench.press(Qt::Key_Home);
  EXPECT_EQ(bench.bar()->value(), 0);
}

TEST(general, up_and_down_belong_to_the_menu) {
  HelpBench bench;
  bench.press(Qt::Key_Up);
  EXPECT_EQ(bench.window.menu().state().hovered(), 12);
  EXPECT_EQ(bench.bar()->value(), 0);
}

TEST(general, the_text_is_selected_and_copied_by_keys_and_by_mouse) {
  HelpBench bench;
  bench.press(Qt::Key_A, Qt::ControlModifier);
  bench.press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
      QStringLiteral("General Information on the TARVOSTEST Program")));
  QTest::mouseDClick(bench.view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                     bench.view()->cursorRect(QTextCursor(bench.view()->document())).center() + QPoint(8, 0));
  EXPECT_EQ(bench.view()->textCursor().selectedText(), QStringLiteral("General"));
  bench.press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_GT(bench.view()->textCursor().selectedText().size(), 7);
}

TEST(general, nothing_can_be_typed_into_it) {
  HelpBench bench;
  const QString before = bench.view()->toPlainText();
  QTest::keyClicks(bench.view(), QStringLiteral("typed"));
  EXPECT_EQ(bench.view()->toPlainText(), before);
}

TEST(general, the_view_fills_the_screen_and_names_its_source) {
  HelpBench bench;
  EXPECT_EQ(bench.view()->geometry(), bench.find("general")->rect());
  EXPECT_EQ(bench.view()->property("source").toString(), QStringLiteral("C:\\tarvos\\TARVOSTESTINFO.RTF"));
  EXPECT_EQ(QAccessible::queryAccessibleInterface(bench.view())->text(QAccessible::Name),
            QStringLiteral("General Info"));
}

TEST(general, no_line_is_wider_than_the_smallest_view) {
  HelpBench bench;
  bench.view()->setFixedSize(400, 300);
  EXPECT_EQ(bench.view()->horizontalScrollBar()->maximum(), 0);
}
