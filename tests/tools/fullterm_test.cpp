#include "tools/fullterm.h"

#include "support/picture.h"
#include "tools/fullterm_bench.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>

namespace {

using namespace std::chrono_literals;

constexpr QColor black{0, 0, 0};
constexpr QColor blue{0, 0, 255};

/// Whether a part of a picture holds this colour alone.
bool filled(const QImage& picture, const QRect& part, const QColor& colour) {
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) {
      if (picture.pixelColor(x, y) != colour) {
        return false;
      }
    }
  }
  return !part.isEmpty();
}

bool inked(const QImage& picture, const QRect& part) {
  return !filled(picture, part, Qt::white);
}

QString button_caption(const FullBench& bench, const char* name) {
  return bench.full->findChild<QPushButton*>(QLatin1String(name))->text();
}

void push(const FullBench& bench, const char* name) {
  QTest::mouseClick(bench.full->findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
}

}  // namespace

TEST(fullterm, title_captions_and_notes_read_as_they_must) {
  FullBench bench;
  EXPECT_EQ(bench.full->windowTitle(), QStringLiteral("Terminal Mode - Full Screen"));
  EXPECT_FALSE(bench.full->isModal());
  EXPECT_EQ(button_caption(bench, "clear_screen"), QStringLiteral("Clear Screen"));
  EXPECT_EQ(button_caption(bench, "print_screen"), QStringLiteral("F8   Print Screen"));
  QStringList notes;
  for (const QLabel* const note : bench.full->findChildren<QLabel*>()) {
    notes << note->text();
  }
  EXPECT_EQ(notes, (QStringList{QStringLiteral("F9 = NULL"), QStringLiteral("F10 = READER ADDRESS"),
                                QStringLiteral("SCREEN WILL CLEAR AFTER 30 LINES OF DATA")}));
}

TEST(fullterm, drawing_area_is_bold_fixed_pitch_and_the_sink_has_the_focus) {
  FullBench bench;
  EXPECT_TRUE(bench.pop1->font().bold());
  EXPECT_EQ(bench.pop1->font().pointSizeF(), 9.75);
  EXPECT_TRUE(bench.pop1->font().families().contains(QStringLiteral("Courier New")));
  EXPECT_EQ(bench.full->focusWidget(), bench.sink);
}

TEST(fullterm, drawing_area_takes_all_but_1200_twips_and_the_notes_stand_beneath) {
  FullBench bench;
  bench.full->resize(700, 400);
  QApplication::processEvents();
  EXPECT_EQ(bench.pop1->geometry(), QRect(0, 0, 700, 400 - 80));
  const auto notes = bench.full->findChildren<QLabel*>();
  EXPECT_EQ(notes[1]->y(), 400 - 850 * 96 / 1440);
  EXPECT_EQ(notes[2]->y(), 400 - 650 * 96 / 1440);
  for (const QLabel* const note : notes) {
    EXPECT_TRUE(bench.full->rect().contains(note->geometry())) << note->text().toStdString();
    EXPECT_FALSE(bench.pop1->geometry().intersects(note->geometry())) << note->text().toStdString();
  }
}

TEST(fullterm, typed_is_drawn_in_black_received_in_blue_and_both_are_captured) {
  FullBench bench;
  bench.type("AB");
  bench.receive("OK");
  ASSERT_EQ(bench.pop1->lines().size(), 1U);
  const DrawnLine& line = bench.pop1->lines().front();
  ASSERT_EQ(line.size(), 2U);
  EXPECT_EQ(line[0].text, QStringLiteral("AB"));
  EXPECT_EQ(line[0].colour, black);
  EXPECT_EQ(line[1].text, QStringLiteral("OK"));
  EXPECT_EQ(line[1].colour, blue);
  EXPECT_TRUE(bytes_equal(bench.full->captured(), "AB\xFF\xFFOK\xFF\xFF"));
  EXPECT_EQ(bench.port.written(), "AB");
}

TEST(fullterm, colours_reach_the_picture) {
  FullBench bench;
  bench.type("A");
  bench.receive("O");
  const QImage picture = bench.pop1->viewport()->grab().toImage();
  const auto has = [&](int column, const QColor& colour) {
    const QRect cell = pixels_of(picture, bench.pop1->cell(0, column));
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
      for (int x = cell.left() + 1; x < cell.right(); ++x) {
        if (picture.pixelColor(x, y) == colour) {
          return true;
        }
      }
    }
    return false;
  };
  EXPECT_TRUE(has(0, black));
  EXPECT_FALSE(has(0, blue));
  EXPECT_TRUE(has(1, blue));
  EXPECT_FALSE(has(1, black));
}

TEST(fullterm, dos_glyphs_reach_the_picture) {
  FullBench bench;
  bench.alt_code({Qt::Key_2, Qt::Key_1, Qt::Key_9});
  bench.receive("\xDB\xDF\xDC\x85");  // full block, upper half, lower half, a letter with an accent
  const QImage picture = bench.pop1->viewport()->grab().toImage();
  EXPECT_TRUE(filled(picture, bench.part_of_cell(0, 0, 1), black));
  EXPECT_TRUE(filled(picture, bench.part_of_cell(1, 0, 1), blue));
  EXPECT_TRUE(filled(picture, bench.part_of_cell(2, 0, 0.5), blue));
  EXPECT_FALSE(inked(picture, bench.part_of_cell(2, 0.5, 1)));
  EXPECT_FALSE(inked(picture, bench.part_of_cell(3, 0, 0.5)));
  EXPECT_TRUE(filled(picture, bench.part_of_cell(3, 0.5, 1), blue));
  EXPECT_TRUE(inked(picture, bench.part_of_cell(4, 0, 1)));
  EXPECT_FALSE(inked(picture, bench.part_of_cell(5, 0, 1)));
}

TEST(fullterm, bytes_that_come_in_ticks_apart_are_blocks_of_their_own) {
  FullBench bench;
  bench.receive("O");
  bench.receive("K");
  EXPECT_TRUE(bytes_equal(bench.full->captured(), "\xFF\xFFO\xFF\xFF\xFF\xFFK\xFF\xFF"));
}

TEST(fullterm, received_bytes_show_within_twenty_milliseconds_in_one_block) {
  FullBench bench;
  bench.port.arrive("O");
  bench.port.arrive("K", 10ms);
  bench.pump.idle(19ms);
  EXPECT_EQ(bench.drawn(), QString());
  bench.pump.idle(1ms);
  EXPECT_EQ(bench.drawn(), QStringLiteral("OK"));
  EXPECT_TRUE(bytes_equal(bench.full->captured(), "\xFF\xFFOK\xFF\xFF"));
}

TEST(fullterm, enter_draws_a_code_and_sends_cr) {
  FullBench bench;
  bench.press(Qt::Key_Return);
  EXPECT_EQ(bench.port.written(), "\r");
  EXPECT_EQ(bench.drawn(), QStringLiteral("^M"));
}

TEST(fullterm, received_control_characters_are_64_above_and_cr_breaks_no_line) {
  FullBench bench;
  bench.receive(
      "\0\x02"
      "A\r\n\x7F"_bytes);
  EXPECT_EQ(bench.drawn(), QStringLiteral("^@^BA^M^J\u2302"));
  EXPECT_TRUE(bytes_equal(bench.full->captured(), "\xFF\xFF^@^BA^M^J\x7F\xFF\xFF"));
}

TEST(fullterm, escape_tab_space_and_enter_are_typed_and_close_or_press_nothing) {
  FullBench bench;
  bench.press(Qt::Key_Escape);
  bench.press(Qt::Key_Tab);
  bench.press(Qt::Key_Backtab, Qt::ShiftModifier);
  bench.press(Qt::Key_Space);
  bench.press(Qt::Key_Enter);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x1B\t\t \r"));
  EXPECT_EQ(bench.drawn(), QStringLiteral("^[^I^I ^M"));
  EXPECT_TRUE(bench.full->isVisible());
  EXPECT_EQ(bench.full->focusWidget(), bench.sink);
  EXPECT_EQ(bench.sink->text(), QString());
}

TEST(fullterm, keys_are_taken_wherever_the_focus_is) {
  FullBench bench;
  bench.pop1->setFocus();
  bench.type("a");
  bench.press(Qt::Key_Up);
  bench.press(Qt::Key_Tab);
  EXPECT_EQ(bench.port.written(), "a\t");
  EXPECT_EQ(bench.full->focusWidget(), bench.pop1);
  QTest::keyClick(bench.full, Qt::Key_B);
  EXPECT_EQ(bench.port.written(), "a\tb");
}

TEST(fullterm, f9_and_ctrl_2_draw_a_code_and_send_nul) {
  FullBench bench;
  bench.press(Qt::Key_F9);
  bench.press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0\0"_bytes));
  EXPECT_EQ(bench.drawn(), QStringLiteral("^@^@"));
}

TEST(fullterm, f10_sends_the_address_byte_and_draws_it_as_dos_does) {
  FullBench bench(true, "5");
  bench.press(Qt::Key_F10);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x85"));
  EXPECT_EQ(bench.drawn(), QStringLiteral("\u00E0"));
}

TEST(fullterm, alt_code_draws_and_sends_its_character) {
  FullBench bench;
  bench.alt_code({Qt::Key_0, Qt::Key_6, Qt::Key_5});
  bench.alt_code({Qt::Key_3, Qt::Key_0, Qt::Key_0});
  EXPECT_EQ(bench.port.written(), "A");
  EXPECT_EQ(bench.drawn(), QStringLiteral("A"));
}

TEST(fullterm, closed_port_ignores_typing_alt_codes_and_f8) {
  FullBench bench(false);
  bench.type("abc");
  bench.press(Qt::Key_F9);
  bench.press(Qt::Key_F10);
  bench.press(Qt::Key_F8);
  bench.alt_code({Qt::Key_6, Qt::Key_5});
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.full->captured(), "");
  EXPECT_TRUE(bench.printer.jobs.empty());
}

TEST(fullterm, a_composed_character_and_one_of_an_assistive_client_are_typed) {
  FullBench bench;
  QInputMethodEvent event;
  event.setCommitString(QStringLiteral("\u00EA"));
  QApplication::sendEvent(bench.sink, &event);
  bench.sink->insert(QStringLiteral("xy"));
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\xEAxy"));
  EXPECT_EQ(bench.sink->text(), QString());
}

TEST(fullterm, thirty_lines_of_received_data_clear_the_page_and_keep_the_capture) {
  FullBench bench;
  bench.receive(std::string(30 * 79, 'x'));
  bench.pump.idle(100ms);
  EXPECT_EQ(bench.pop1->lines().size(), 30U);
  bench.receive("y");
  EXPECT_EQ(bench.drawn(), QStringLiteral("y"));
  EXPECT_GT(bench.full->captured().size(), 30U * 79U);
}

TEST(fullterm, clear_screen_empties_page_and_capture_and_returns_the_focus_to_the_sink) {
  FullBench bench;
  bench.type("abc");
  bench.pop1->setFocus();
  push(bench, "clear_screen");
  EXPECT_EQ(bench.drawn(), QString());
  EXPECT_EQ(bench.full->captured(), "");
  EXPECT_EQ(bench.full->focusWidget(), bench.sink);
  EXPECT_EQ(bench.port.written(), "abc");
}

TEST(fullterm, the_print_button_prints_nothing_and_f8_prints) {
  FullBench bench;
  bench.type("abc");
  push(bench, "print_screen");
  EXPECT_TRUE(bench.printer.jobs.empty());
  bench.press(Qt::Key_F8);
  ASSERT_EQ(bench.printer.jobs.size(), 1U);
  EXPECT_EQ(bench.printer.jobs[0].lines, (std::vector<PrintLine>{{{"abc", true}}}));
  EXPECT_EQ(bench.full->focusWidget(), bench.pop1);
  EXPECT_EQ(bench.port.written(), "abc");
}

TEST(fullterm, what_comes_while_the_print_dialog_is_open_is_drawn_and_not_printed) {
  FullBench bench;
  bench.type("A");
  bench.printer.meanwhile = [&bench] { bench.receive("later"); };
  bench.press(Qt::Key_F8);
  EXPECT_EQ(bench.printer.jobs.at(0).lines, (std::vector<PrintLine>{{{"A", true}}}));
  EXPECT_EQ(bench.drawn(), QStringLiteral("Alater"));
}

TEST(fullterm, a_text_put_in_during_a_pause_goes_out_after_it) {
  FullBench bench;
  bench.pump.after(50ms, [&bench] {
    bench.full->type(QStringLiteral("late"));
    EXPECT_EQ(bench.port.written(), "");
  });
  bench.pump.sleep(100ms);
  bench.pump.idle(10ms);
  EXPECT_EQ(bench.port.written(), "late");
}

TEST(fullterm, fits_the_screen) {
  FullBench bench;
  EXPECT_LE(bench.full->height(), bench.full->screen()->availableSize().height());
  EXPECT_LE(bench.full->width(), bench.full->screen()->availableSize().width());
}

TEST(fullterm, an_assistive_client_reads_what_is_drawn) {
  FullBench bench;
  bench.type("AB");
  bench.receive("OK");
  QAccessibleInterface* const page = QAccessible::queryAccessibleInterface(bench.pop1);
  ASSERT_NE(page, nullptr);
  ASSERT_NE(page->textInterface(), nullptr);
  EXPECT_EQ(page->textInterface()->text(0, 4), QStringLiteral("ABOK"));
  EXPECT_FALSE(page->text(QAccessible::Name).isEmpty());
}

TEST(fullterm, every_control_has_a_name_for_assistive_clients) {
  FullBench bench;
  for (QWidget* const widget : bench.full->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    QAccessibleInterface* const control = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(control, nullptr);
    EXPECT_FALSE(control->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
  }
}

TEST(fullterm, a_pressed_button_by_an_assistive_client_acts_as_a_clicked_one) {
  FullBench bench;
  bench.type("abc");
  auto* const button = bench.full->findChild<QPushButton*>(QStringLiteral("clear_screen"));
  QAccessibleInterface* const control = QAccessible::queryAccessibleInterface(button);
  ASSERT_NE(control->actionInterface(), nullptr);
  control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(QTest::qWaitFor([&] { return bench.full->captured().empty(); }, 1000));
}

TEST(fullterm, a_flood_is_drawn_in_pieces_and_none_is_lost) {
  FullBench bench;
  std::string flood;
  for (int number = 0; flood.size() < 10000; ++number) {
    flood += std::to_string(number) + ' ';
  }
  bench.port.arrive(flood);
  bench.pump.idle(20ms);
  EXPECT_LT(bench.full->captured().size(), 2000U);
  bench.pump.idle(500ms);
  std::string received;
  for (const char byte : bench.full->captured()) {
    if (byte != '\xFF') {
      received += byte;
    }
  }
  EXPECT_EQ(received, flood);
}
