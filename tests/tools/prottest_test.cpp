#include "tools/prottest.h"

#include "shell/text_box.h"
#include "support/picture.h"
#include "support/window_bench.h"
#include "tools/drawn_text.h"

#include <QAccessible>
#include <QCheckBox>
#include <QImage>

#include <array>
#include <set>

namespace {

using namespace std::chrono_literals;

const std::string poll_of_5 = "\x85\x02?\x03";

struct ProttestBench : WindowBench {
  ProttestBench() { open(ScreenCode::prottest); }

  QString text(const char* box) { return find<TextBox>(box)->text(); }

  /// Empties a box by hand and types into it.
  void type(const char* box, const char* text) {
    auto* const edit = find<TextBox>(box);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QLatin1String(text));
  }

  void type_range(const char* first, const char* last) {
    type("Text8", first);
    type("Text9", last);
  }

  QString display() { return find<DrawnText>("protdisp")->text(); }

  void after(std::chrono::milliseconds delay, std::function<void()> action) {
    pump.after(delay, std::move(action), true);
  }

  void show_all() { click(find("Check13")); }

  /// Every colour of the first 14 characters of a line, in a picture of the whole screen.
  std::set<QRgb> colours_of(int line) {
    QWidget& screen = *find("prottest");
    const QImage picture = screen.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto& display = *find<DrawnText>("protdisp");
    QRectF area = display.cell(line, 0).united(display.cell(line, 13));
    area.translate(display.viewport()->mapTo(&screen, QPoint(0, 0)));
    const QRect pixels = pixels_of(picture, area);
    std::set<QRgb> colours;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
      for (int x = pixels.left(); x <= pixels.right(); ++x) {
        colours.insert(picture.pixel(x, y));
      }
    }
    return colours;
  }
};

}  // namespace

TEST(prottest, an_f1_that_only_repeats_starts_nothing) {
  ProttestBench bench;
  QKeyEvent event(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
  QCoreApplication::sendEvent(bench.find("Text8"), &event);
  EXPECT_EQ(bench.port.written(), "");
  bench.find("Text8")->setFocus();
  QCoreApplication::sendEvent(bench.find("Text8"), &event);
  EXPECT_EQ(bench.port.written(), "");
  bench.after(100ms, [&bench] { bench.click("F2 Stop"); });
  QTest::keyClick(bench.find("Text8"), Qt::Key_F1);
  EXPECT_NE(bench.port.written(), "");
}

TEST(prottest, entering_shows_the_values_that_polling_starts_from) {
  ProttestBench bench;
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
  EXPECT_EQ(bench.text("Text8"), QStringLiteral("0"));
  EXPECT_EQ(bench.text("Text9"), QStringLiteral("0"));
  EXPECT_EQ(bench.text("Text24"), QStringLiteral("100"));
  EXPECT_EQ(bench.text("Text25"), QStringLiteral("100"));
  EXPECT_FALSE(bench.find<QCheckBox>("Check13")->isChecked());
}

TEST(prottest, coming_back_shows_the_same_values_again_whatever_was_typed_and_polled) {
  ProttestBench bench;
  bench.type_range("5", "6");
  bench.type("Text24", "20");
  bench.type("Text25", "30");
  bench.show_all();
  bench.after(0ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.display(), QStringLiteral("Unit 005 TIMEOUT\n"));
  bench.open(ScreenCode::com);
  bench.open(ScreenCode::prottest);
  EXPECT_EQ(bench.text("Text8"), QStringLiteral("0"));
  EXPECT_EQ(bench.text("Text9"), QStringLiteral("0"));
  EXPECT_EQ(bench.text("Text24"), QStringLiteral("100"));
  EXPECT_EQ(bench.text("Text25"), QStringLiteral("100"));
  // The check box is kept, and the display keeps its lines.
  EXPECT_TRUE(bench.find<QCheckBox>("Check13")->isChecked());
  EXPECT_EQ(bench.display(), QStringLiteral("Unit 005 TIMEOUT\n"));
}

TEST(prottest, the_controls_carry_their_words) {
  ProttestBench bench;
  EXPECT_EQ(bench.find("Text8")->accessibleName(), QStringLiteral("Addresses to Poll"));
  EXPECT_EQ(bench.find("Text9")->accessibleName(), QStringLiteral("thru"));
  EXPECT_EQ(bench.find("Text24")->accessibleName(), QStringLiteral("Poll Delay (ms)"));
  EXPECT_EQ(bench.find("Text25")->accessibleName(), QStringLiteral("Poll Timeout (ms)"));
  EXPECT_EQ(bench.find<QCheckBox>("Check13")->text(), QStringLiteral("Show all Polls"));
  EXPECT_EQ(bench.find<QPushButton>("Command86")->text(), QStringLiteral("F1 Start"));
  EXPECT_EQ(bench.find<QPushButton>("Command87")->text(), QStringLiteral("F2 Stop"));
  EXPECT_EQ(bench.find<QPushButton>("Command92")->text(), QStringLiteral("Reset All Readers"));
  EXPECT_EQ(bench.find("protdisp")->accessibleName(), QStringLiteral("Protocol Test"));
}

TEST(prottest, the_boxes_take_digits_and_backspace_only) {
  ProttestBench bench;
  for (const char* const box : {"Text8", "Text9", "Text24", "Text25"}) {
    bench.type(box, "1a2-3");
    EXPECT_EQ(bench.text(box), QStringLiteral("123")) << box;
    QTest::keyClick(bench.find(box), Qt::Key_Backspace);
    EXPECT_EQ(bench.text(box), QStringLiteral("12")) << box;
  }
}

TEST(prottest, f1_and_f2_press_the_start_and_stop_buttons_wherever_the_focus_is) {
  ProttestBench bench;
  bench.type_range("5", "5");
  bench.after(350ms, [&] { QTest::keyClick(bench.window.focusWidget(), Qt::Key_F2); });
  QTest::keyClick(bench.find("Text9"), Qt::Key_F1);
  EXPECT_EQ(bench.port.written(), poll_of_5 + "\x06\x06" + poll_of_5 + "\x06\x06");
  EXPECT_FALSE(bench.program.services().busy.polling_on);
}

TEST(prottest, a_reply_is_drawn_in_its_colour_and_in_dos_characters) {
  ProttestBench bench;
  bench.type_range("5", "5");
  bench.port.answer(poll_of_5,
                    "\x06\x85\x01"
                    "A\x03");
  bench.port.answer(poll_of_5, "\x06\x85\x04\x03");
  bench.port.answer(poll_of_5, "\x06\x85\x02\x81\xE1\x03");
  bench.after(450ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.display(), QStringLiteral("Unit 005\u00E0^AA^C\n"
                                            "Unit 005\u00E0^D^C\n"
                                            "Unit 005\u00E0^B\u00FC\u00DF^C\n"));
  const std::vector<DrawnLine>& lines = bench.find<DrawnText>("protdisp")->lines();
  EXPECT_EQ(lines.at(0).at(0).colour, QColor(0xFF, 0x00, 0x00));
  EXPECT_EQ(lines.at(1).at(0).colour, QColor(0x00, 0xFF, 0x00));
  EXPECT_EQ(lines.at(2).at(0).colour, QColor(0x00, 0x00, 0x00));
}

TEST(prottest, the_screen_shows_a_record_in_red_an_end_in_green_and_all_else_in_black) {
  ProttestBench bench;
  bench.type_range("5", "5");
  bench.port.answer(poll_of_5, "\x06\x85\x01HHH\x03");
  bench.port.answer(poll_of_5, "\x06\x85\x04HHH\x03");
  bench.port.answer(poll_of_5, "\x06\x85\x02HHH\x03");
  bench.after(450ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  const QRgb red = qRgb(0xFF, 0x00, 0x00);
  const QRgb green = qRgb(0x00, 0xFF, 0x00);
  const QRgb black = qRgb(0x00, 0x00, 0x00);
  const std::array<QRgb, 3> expected{red, green, black};
  for (std::size_t line = 0; line < expected.size(); ++line) {
    const std::set<QRgb> found = bench.colours_of(static_cast<int>(line));
    for (const QRgb colour : expected) {
      EXPECT_EQ(found.contains(colour), colour == expected.at(line)) << line << ' ' << std::hex << colour;
    }
    EXPECT_TRUE(found.contains(qRgb(0xFF, 0xFF, 0xFF))) << line;
  }
}

TEST(prottest, the_display_tells_its_lines_to_assistive_clients) {
  ProttestBench bench;
  bench.type_range("5", "5");
  bench.show_all();
  bench.after(0ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  auto* const interface = QAccessible::queryAccessibleInterface(bench.find("protdisp"));
  ASSERT_NE(interface->textInterface(), nullptr);
  EXPECT_EQ(interface->textInterface()->text(0, 16), QStringLiteral("Unit 005 TIMEOUT"));
}

TEST(prottest, a_full_display_shows_its_thirty_lines_without_scrolling) {
  ProttestBench bench;
  auto* const display = bench.find<DrawnText>("protdisp");
  EXPECT_TRUE(QRectF(display->viewport()->rect()).contains(display->cell(29, 63)));
}

TEST(prottest, leaving_during_polling_is_refused_and_polling_goes_on) {
  ProttestBench bench;
  bench.dialogs.expect_message("Polling must be stopped before changing screens");
  bench.after(150ms, [&] { bench.open(ScreenCode::com); });
  bench.after(350ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
  EXPECT_EQ(bench.port.writes.size(), 6U);
  bench.open(ScreenCode::com);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(prottest, enter_leaves_during_polling_and_polling_elsewhere_blocks_no_screen) {
  ProttestBench bench;
  bench.after(150ms, [&] {
    QTest::keyClick(bench.window.focusWidget(), Qt::Key_Down);
    QTest::keyClick(bench.window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(bench.window.screen_code(), ScreenCode::test);
    bench.open(ScreenCode::com);
    EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
    EXPECT_TRUE(bench.program.services().busy.polling_on);
    bench.open(ScreenCode::prottest);
  });
  bench.after(350ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_FALSE(bench.program.services().busy.polling_on);
}

TEST(prottest, an_emptied_box_is_told_and_the_next_start_works) {
  ProttestBench bench;
  bench.type("Text24", "");
  bench.dialogs.expect_message("Type mismatch");
  bench.click("F1 Start");
  EXPECT_FALSE(bench.program.services().busy.polling_on);
  bench.type("Text24", "100");
  bench.after(0ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.port.writes.size(), 3U);
}

TEST(prottest, a_pasted_character_that_is_no_byte_is_told_as_no_number) {
  ProttestBench bench;
  bench.find<TextBox>("Text8")->setText(QStringLiteral("\u0665"));
  bench.dialogs.expect_message("Type mismatch");
  bench.click("F1 Start");
}

TEST(prottest, a_second_f1_during_polling_takes_the_new_range_and_one_f2_stops) {
  ProttestBench bench;
  bench.show_all();
  bench.after(150ms, [&] {
    bench.type_range("7", "7");
    QTest::keyClick(bench.find("Text9"), Qt::Key_F1);
  });
  bench.after(300ms, [&] { QTest::keyClick(bench.find("Text9"), Qt::Key_F2); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.display(), QStringLiteral("Unit 007 TIMEOUT\n"));
  EXPECT_FALSE(bench.program.services().busy.polling_on);
}

TEST(prottest, the_check_box_works_during_polling_also_for_an_assistive_client) {
  ProttestBench bench;
  bench.after(150ms, [&] { bench.find<QCheckBox>("Check13")->setChecked(true); });
  bench.after(350ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.display(), QStringLiteral("Unit 000 TIMEOUT\nUnit 000 TIMEOUT\n"));
}

TEST(prottest, closing_the_window_while_polling_ends_at_once) {
  ProttestBench bench;
  bench.after(150ms, [&] { bench.window.close(); });
  bench.click("F1 Start");
  EXPECT_LE(bench.pump.elapsed(), 160ms);
  EXPECT_FALSE(bench.port.is_open);
}

TEST(prottest, a_start_on_a_closed_port_is_told) {
  WindowBench bench(false);
  bench.open(ScreenCode::prottest);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click("F1 Start");
  bench.dialogs.expect_message("Comm port is not open");
  bench.click("Reset All Readers");
}

TEST(prottest, reset_all_readers_works_while_polling) {
  ProttestBench bench;
  bench.after(150ms, [&] {
    bench.click("Reset All Readers");
    bench.click("F2 Stop");
  });
  bench.click("F1 Start");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x80\x02?\x03\x00U\x0D\xFF\x02\x00U\x03\x06\x06"_bytes));
}

TEST(prottest, the_line_check_can_be_run_from_elsewhere) {
  ProttestBench bench;
  bench.show_all();
  bench.after(30 * 200ms - 50ms, [&] { bench.click("F2 Stop"); });
  bench.click("F1 Start");
  EXPECT_EQ(bench.display().count(u'\n'), 30);
  bench.program.services().checkline();
  EXPECT_EQ(bench.display(), QString());
}

TEST(prottest, fits_the_smallest_window) {
  ProttestBench bench;
  const QSize smallest = bench.find("prottest")->minimumSizeHint();
  EXPECT_LE(smallest.width(), 576);
  EXPECT_LE(smallest.height(), 540);
}
