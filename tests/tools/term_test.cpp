#include "tools/term.h"

#include "tools/term_bench.h"

#include <QAccessible>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>

namespace {

using namespace std::chrono_literals;

using Lines = std::vector<std::string>;

QString clipboard_text() {
  return QApplication::clipboard()->text();
}

}  // namespace

TEST(term, focus_stands_in_the_typing_box_on_entry) {
  TermBench bench;
  EXPECT_EQ(bench.window.focusWidget(), bench.typing);
}

TEST(term, labels_hints_and_buttons_read_as_they_must) {
  TermBench bench;
  QStringList labels;
  for (const QLabel* const label : bench.find("term")->findChildren<QLabel*>()) {
    labels << label->text();
  }
  EXPECT_EQ(labels, (QStringList{QStringLiteral("Terminal"), QStringLiteral("Reader"),
                                 QStringLiteral("F9 = NULL"), QStringLiteral("F10 = READER ADDRESS")}));
  QStringList captions;
  for (const QPushButton* const button : bench.find("term")->findChildren<QPushButton*>()) {
    captions << button->text();
  }
  EXPECT_EQ(captions, (QStringList{QStringLiteral("Clear Screen"), QStringLiteral("Full  Screen"),
                                   QStringLiteral("Print")}));
}

TEST(term, boxes_are_in_the_fixed_font_with_their_scroll_bars) {
  TermBench bench;
  for (const TerminalView* const box : {static_cast<TerminalView*>(bench.typing), bench.received}) {
    EXPECT_EQ(box->font().pointSizeF(), 9.75);
    EXPECT_TRUE(box->font().families().contains(QStringLiteral("Courier New")));
    EXPECT_EQ(box->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
  }
  EXPECT_EQ(bench.typing->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_EQ(bench.received->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

TEST(term, a_typed_letter_is_sent_and_shown) {
  TermBench bench;
  bench.type("A");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "A"));
  EXPECT_EQ(bench.typed_lines(), Lines{"A"});
}

TEST(term, ctrl_b_is_sent_as_stx_and_shown_with_a_caret) {
  TermBench bench;
  bench.press(Qt::Key_B, Qt::ControlModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x02"));
  EXPECT_EQ(bench.typed_lines(), Lines{"^B"});
}

TEST(term, enter_sends_cr_alone_and_begins_a_line) {
  TermBench bench;
  bench.type("V");
  bench.press(Qt::Key_Return);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\r"));
  EXPECT_EQ(bench.typed_lines(), (Lines{"V", ""}));
}

TEST(term, ctrl_m_is_enter) {
  TermBench bench;
  bench.press(Qt::Key_M, Qt::ControlModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\r"));
  EXPECT_EQ(bench.typed_lines(), (Lines{"", ""}));
}

TEST(term, f9_and_ctrl_2_send_one_nul_each) {
  TermBench bench;
  bench.press(Qt::Key_F9);
  EXPECT_EQ(bench.port.writes, (Lines{"\0"_bytes}));
  bench.press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(bench.port.writes, (Lines{"\0"_bytes, "\0"_bytes}));
  EXPECT_EQ(bench.typed_lines(), Lines{"^@^@"});
}

TEST(term, f10_sends_the_address_byte_alone_and_shows_it) {
  TermBench bench(true, "5");
  bench.press(Qt::Key_F10);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x85"));
  EXPECT_EQ(bench.typed_lines(), Lines{"\x85"});
  EXPECT_EQ(bench.typing->text(), QStringLiteral("\u00E0"));  // as DOS shows it
}

TEST(term, f10_sends_the_address_as_it_was_when_the_screen_was_entered) {
  TermBench bench(true, "5");
  bench.program.services().settings.reader_address = "6";
  bench.press(Qt::Key_F10);
  bench.open(ScreenCode::diag);
  bench.open(ScreenCode::term);
  bench.press(Qt::Key_F10);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x85\x86"));
}

TEST(term, a_blank_address_is_told_on_entry_and_f10_sends_the_one_before) {
  WindowBench bench;
  bench.program.services().settings.reader_address = "";
  bench.dialogs.expect_message("A Network address has not been set");
  bench.open(ScreenCode::term);
  bench.dialogs.verify();
  QTest::keyClick(bench.find("Text7"), Qt::Key_F10);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0"_bytes));
  bench.port.arrive("still received");
  bench.pump.idle(5ms);
  EXPECT_EQ(bench.find<TerminalView>("Text1")->content().lines(), Lines{"still received"});
}

TEST(term, alt_065_sends_and_shows_a) {
  TermBench bench;
  bench.alt_code({Qt::Key_0, Qt::Key_6, Qt::Key_5});
  EXPECT_TRUE(bytes_equal(bench.port.written(), "A"));
  EXPECT_EQ(bench.typed_lines(), Lines{"A"});
  bench.type("b");
  EXPECT_EQ(bench.port.written(), "Ab");
}

TEST(term, alt_without_digits_sends_nul) {
  TermBench bench;
  bench.alt_code({});
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0"_bytes));
  EXPECT_EQ(bench.typed_lines(), Lines{"\0"_bytes});
}

TEST(term, an_alt_code_checks_the_lines_of_the_protocol_tests_display) {
  TermBench bench;
  int checks = 0;
  bench.program.services().checkline = [&checks] { ++checks; };
  bench.alt_code({Qt::Key_6, Qt::Key_5});
  EXPECT_EQ(checks, 1);
}

TEST(term, leaving_the_box_while_alt_is_held_forgets_the_alt_code) {
  TermBench bench;
  QTest::keyPress(bench.typing, Qt::Key_Alt);
  QTest::keyClick(bench.typing, Qt::Key_6, Qt::KeypadModifier);
  bench.received->setFocus();
  bench.typing->setFocus();
  QTest::keyRelease(bench.typing, Qt::Key_Alt);
  bench.type("x");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "x"));
}

TEST(term, alt_code_above_255_does_nothing) {
  TermBench bench;
  bench.alt_code({Qt::Key_2, Qt::Key_5, Qt::Key_6});
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.typed_lines(), Lines{""});
}

TEST(term, shortcuts_of_editors_are_control_characters) {
  TermBench bench;
  QApplication::clipboard()->setText(QStringLiteral("pasted"));
  bench.type("abc");
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V, Qt::Key_Z}) {
    bench.press(key, Qt::ControlModifier);
  }
  EXPECT_TRUE(bytes_equal(bench.port.written(), "abc\x01\x03\x18\x16\x1A"));
  EXPECT_EQ(bench.typed_lines(), Lines{"abc^A^C^X^V^Z"});
  EXPECT_EQ(clipboard_text(), QStringLiteral("pasted"));
}

TEST(term, tab_moves_the_focus_and_ctrl_i_sends_it) {
  TermBench bench;
  bench.press(Qt::Key_I, Qt::ControlModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\t"));
  EXPECT_EQ(bench.typed_lines(), Lines{"^I"});
  bench.press(Qt::Key_Tab);
  EXPECT_EQ(bench.window.focusWidget(), bench.received);
  QTest::keyClick(bench.received, Qt::Key_Backtab);
  EXPECT_EQ(bench.window.focusWidget(), bench.typing);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\t"));
}

TEST(term, a_character_outside_windows_1252_sends_nothing) {
  TermBench bench;
  QTest::sendKeyEvent(QTest::Click, bench.typing, Qt::Key_unknown, QStringLiteral("\u0416"), {});
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.typed_lines(), Lines{""});
}

TEST(term, a_typed_accent_goes_out_as_windows_1252_and_shows_as_dos) {
  TermBench bench;
  QTest::sendKeyEvent(QTest::Click, bench.typing, Qt::Key_unknown, QStringLiteral("\u00E9"), {});
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\xE9"));
  EXPECT_EQ(bench.typing->text(), QStringLiteral("\u0398"));
}

TEST(term, a_composed_character_is_sent_as_typed) {
  TermBench bench;
  QInputMethodEvent event;
  event.setCommitString(QStringLiteral("\u00EA"));
  QApplication::sendEvent(bench.typing, &event);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\xEA"));
}

TEST(term, delete_and_the_carets_keys_edit_the_box_and_send_nothing) {
  TermBench bench;
  bench.type("abc");
  bench.press(Qt::Key_Home);
  bench.press(Qt::Key_Delete);
  EXPECT_EQ(bench.typed_lines(), Lines{"bc"});
  bench.press(Qt::Key_Right, Qt::ShiftModifier);
  bench.press(Qt::Key_Delete);
  EXPECT_EQ(bench.typed_lines(), Lines{"c"});
  EXPECT_EQ(bench.port.written(), "abc");
}

TEST(term, a_character_is_shown_where_the_caret_stands_and_a_code_at_the_end) {
  TermBench bench;
  bench.type("ac");
  bench.press(Qt::Key_Left);
  bench.type("b");
  bench.press(Qt::Key_Home);
  bench.press(Qt::Key_F9);
  bench.type("d");
  EXPECT_EQ(bench.typed_lines(), Lines{"abc^@d"});
}

TEST(term, a_character_replaces_what_is_selected) {
  TermBench bench;
  bench.type("abc");
  bench.press(Qt::Key_Home, Qt::ShiftModifier);
  bench.type("x");
  EXPECT_EQ(bench.typed_lines(), Lines{"x"});
}

TEST(term, backspace_is_a_control_character) {
  TermBench bench;
  bench.type("a");
  bench.press(Qt::Key_Backspace);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "a\x08"));
  EXPECT_EQ(bench.typed_lines(), Lines{"a^H"});
}

TEST(term, ctrl_that_is_held_over_a_change_of_screens_is_held_still) {
  TermBench bench;
  QTest::keyPress(bench.typing, Qt::Key_Control);
  for (const ScreenCode code : {ScreenCode::diag, ScreenCode::term}) {
    QTest::mouseClick(bench.window.menu().entry(menu_index(code)), Qt::LeftButton, Qt::ControlModifier);
  }
  QTest::keyPress(bench.typing, Qt::Key_2);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0"_bytes));
}

TEST(term, ctrl_that_was_let_go_on_another_screen_is_not_held_any_more) {
  TermBench bench;
  QTest::keyPress(bench.typing, Qt::Key_Control);
  bench.open(ScreenCode::diag);
  bench.open(ScreenCode::term);
  bench.typing->setFocus();
  bench.press(Qt::Key_2);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "2"));
}

TEST(term, ctrl_that_was_let_go_in_another_box_is_not_held_any_more) {
  TermBench bench;
  QTest::keyPress(bench.typing, Qt::Key_Control);
  bench.received->setFocus();
  QTest::keyRelease(bench.received, Qt::Key_Control);
  bench.typing->setFocus();
  bench.press(Qt::Key_2);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "2"));
}

TEST(term, closed_port_ignores_typing_pasting_and_alt_codes) {
  TermBench bench(false);
  bench.type("abc");
  bench.press(Qt::Key_Return);
  bench.press(Qt::Key_F9);
  bench.press(Qt::Key_F10);
  bench.alt_code({Qt::Key_6, Qt::Key_5});
  bench.typing->type(QStringLiteral("pasted"));
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.typed_lines(), Lines{""});
  bench.press(Qt::Key_Tab);
  EXPECT_EQ(bench.window.focusWidget(), bench.received);
}

TEST(term, received_text_is_shown_and_cr_breaks_the_line) {
  TermBench bench;
  bench.receive("OK\r");
  EXPECT_EQ(bench.received_lines(), (Lines{"OK", ""}));
}

TEST(term, received_control_characters_show_48_above_and_then_themselves) {
  TermBench bench;
  bench.receive(
      "\x02"
      "A\x03");
  EXPECT_TRUE(bytes_equal(bench.received_lines().front(),
                          "^2\x02"
                          "A^3\x03"));
}

TEST(term, typed_and_received_control_characters_are_shown_by_different_rules) {
  TermBench bench;
  bench.press(Qt::Key_Escape);
  bench.receive("\x1B");
  EXPECT_EQ(bench.typed_lines(), Lines{"^["});
  EXPECT_EQ(bench.received_lines(), Lines{"^K\x1B"});
}

TEST(term, received_nul_is_shown_three_times_and_cuts_nothing) {
  TermBench bench;
  bench.receive("a\0b"_bytes);
  EXPECT_TRUE(bytes_equal(bench.received_lines().front(), "a^@^0\0b"_bytes));
  EXPECT_EQ(bench.received->text(), QStringLiteral("a^@^0\u2400b"));
}

TEST(term, received_lf_breaks_no_line) {
  TermBench bench;
  bench.receive("a\nb\r\nc");
  EXPECT_EQ(bench.received_lines(), (Lines{"a^:\nb", "^:\nc"}));
}

TEST(term, received_bytes_from_0x7f_on_are_dos_characters) {
  TermBench bench;
  bench.receive("\x7F\x80\xB0\xFF");
  EXPECT_EQ(bench.received->text(), QStringLiteral("\u2302\u00C7\u2591\u00A0"));
}

TEST(term, clear_screen_empties_both_boxes_and_sends_nothing) {
  TermBench bench;
  bench.type("abc");
  bench.receive("def\rghi");
  bench.click("Clear Screen");
  EXPECT_EQ(bench.typed_lines(), Lines{""});
  EXPECT_EQ(bench.received_lines(), Lines{""});
  EXPECT_EQ(bench.port.written(), "abc");
}

TEST(term, print_says_where_printing_is_and_sends_nothing) {
  TermBench bench;
  bench.dialogs.expect_message("Function currently disabled - use full screen mode");
  bench.click("Print");
  bench.dialogs.verify();
  EXPECT_EQ(bench.port.written(), "");
}

TEST(term, texts_stay_over_a_change_of_screens_and_nothing_is_received_meanwhile) {
  TermBench bench;
  bench.type("a");
  bench.receive("b");
  bench.open(ScreenCode::diag);
  bench.receive("c");
  EXPECT_EQ(bench.port.waiting(), "c");
  bench.open(ScreenCode::term);
  bench.pump.idle(5ms);
  EXPECT_EQ(bench.typed_lines(), Lines{"a"});
  EXPECT_EQ(bench.received_lines(), Lines{"bc"});
}

TEST(term, up_and_down_belong_to_the_boxes) {
  TermBench bench;
  bench.type("ab");
  bench.press(Qt::Key_Return);
  bench.type("cd");
  bench.press(Qt::Key_Up);
  bench.type("x");
  EXPECT_EQ(bench.typed_lines(), (Lines{"abx", "cd"}));
  bench.press(Qt::Key_Down);
  bench.type("y");
  EXPECT_EQ(bench.typed_lines(), (Lines{"abx", "cdy"}));
  EXPECT_FALSE(bench.window.menu().state().hovered());
}

TEST(term, receive_box_is_read_only_and_takes_no_keys) {
  TermBench bench;
  bench.receive("abc");
  bench.received->setFocus();
  QTest::keyClicks(bench.received, QStringLiteral("xyz"));
  QTest::keyClick(bench.received, Qt::Key_Delete);
  EXPECT_EQ(bench.received_lines(), Lines{"abc"});
  EXPECT_EQ(bench.port.written(), "");
}

TEST(term, a_selection_stays_while_bytes_arrive_and_nothing_is_lost) {
  TermBench bench;
  bench.receive("abc\rdef");
  bench.received->setFocus();
  bench.received->select(0, 3);
  bench.receive("ghi\rjkl");
  EXPECT_EQ(bench.received_lines(), (Lines{"abc", "defghi", "jkl"}));
  QTest::keyClick(bench.received, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard_text(), QStringLiteral("abc"));
}

TEST(term, a_moved_caret_returns_to_the_end_with_the_next_byte) {
  TermBench bench;
  bench.receive("abc\rdef");
  bench.received->setFocus();
  QTest::keyClick(bench.received, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(bench.received->caret(), 0);
  bench.receive("g");
  EXPECT_EQ(bench.received->caret(), 8);
  EXPECT_EQ(bench.received_lines(), (Lines{"abc", "defg"}));
}

TEST(term, an_assistive_client_reads_both_boxes_and_types_into_one) {
  TermBench bench;
  bench.receive("OK\r\x06");
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(bench.received);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Reader"));
  EXPECT_TRUE(reader->state().readOnly);
  ASSERT_NE(reader->textInterface(), nullptr);
  EXPECT_EQ(reader->textInterface()->text(0, reader->textInterface()->characterCount()),
            QStringLiteral("OK\n^6\u2406"));
  int start = -1;
  int end = -1;
  EXPECT_EQ(reader->textInterface()->textAtOffset(4, QAccessible::LineBoundary, &start, &end),
            QStringLiteral("^6\u2406"));
  EXPECT_EQ(start, 3);
  EXPECT_EQ(end, 6);
  EXPECT_EQ(reader->editableTextInterface(), nullptr);

  QAccessibleInterface* const terminal = QAccessible::queryAccessibleInterface(bench.typing);
  ASSERT_NE(terminal, nullptr);
  EXPECT_EQ(terminal->text(QAccessible::Name), QStringLiteral("Terminal"));
  EXPECT_TRUE(terminal->state().editable);
  ASSERT_NE(terminal->editableTextInterface(), nullptr);
  terminal->editableTextInterface()->insertText(0, QStringLiteral("V\r"));
  EXPECT_EQ(bench.port.written(), "V\r");
  EXPECT_EQ(bench.typed_lines(), (Lines{"V", ""}));
}

TEST(term, what_is_typed_while_the_port_hangs_up_is_dropped_without_a_word) {
  TermBench bench;
  bench.port.hang_up();
  bench.type("abc");
  bench.receive("x");
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.typed_lines(), Lines{""});
}
