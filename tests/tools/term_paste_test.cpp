// Text that comes at once: pasted, put in by an assistive client, and what is typed behind it.

#include "tools/term.h"
#include "tools/term_bench.h"

#include <QClipboard>

namespace {

using namespace std::chrono_literals;

using Lines = std::vector<std::string>;

}  // namespace

TEST(term_paste, shift_insert_sends_the_clipboard_as_typed) {
  TermBench bench;
  QApplication::clipboard()->setText(QStringLiteral("a\r\nb\u0416\nc\td"));
  bench.press(Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "a\rb\rc\td"));
  EXPECT_EQ(bench.typed_lines(), (Lines{"a", "b", "c^Id"}));
}

TEST(term_paste, a_long_paste_is_sent_whole_and_in_order_in_pieces_that_leave_time_for_clicks) {
  TermBench bench;
  QString text;
  for (int number = 0; number < 2000; ++number) {
    text += QString::number(number) + u' ';
  }
  bench.typing->type(text);
  EXPECT_LT(bench.port.written().size(), 100U);
  bench.pump.idle(2000ms);
  EXPECT_EQ(bench.port.written(), text.toStdString());
  EXPECT_EQ(bench.typed_lines(), Lines{text.toStdString()});
}

TEST(term_paste, what_is_typed_during_a_paste_goes_out_after_it) {
  TermBench bench;
  bench.typing->type(QString(200, u'x'));
  bench.type("end");
  bench.press(Qt::Key_Return);
  bench.press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(bench.port.written().find('e'), std::string::npos);
  bench.pump.idle(2000ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(), std::string(200, 'x') + "end\r\x03"));
}

TEST(term_paste, texts_keys_and_alt_codes_go_out_in_their_order_during_a_paste) {
  TermBench bench;
  bench.typing->type(QString(200, u'x'));
  bench.press(Qt::Key_Return);
  bench.typing->type(QStringLiteral("second"));
  bench.alt_code({Qt::Key_6, Qt::Key_5});
  QInputMethodEvent composed;
  composed.setCommitString(QStringLiteral("\u00E9"));
  QCoreApplication::sendEvent(bench.typing, &composed);
  EXPECT_EQ(bench.port.written().find_first_not_of('x'), std::string::npos);
  bench.pump.idle(2000ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(), std::string(200, 'x') + "\rsecondA\xE9"));
}

TEST(term_paste, ctrl_counts_for_the_keys_that_were_pressed_with_it_also_behind_a_paste) {
  TermBench bench;
  bench.typing->type(QString(200, u'x'));
  QTest::keyPress(bench.typing, Qt::Key_Control);
  bench.press(Qt::Key_2);
  QTest::keyRelease(bench.typing, Qt::Key_Control);
  bench.press(Qt::Key_2);
  bench.pump.idle(2000ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(), std::string(200, 'x') + std::string(1, '\0') + "2"));
}

TEST(term_paste, an_alt_code_whose_focus_is_lost_during_a_paste_sends_nothing) {
  TermBench bench;
  bench.typing->type(QString(200, u'x'));
  QTest::keyPress(bench.typing, Qt::Key_Alt);
  bench.press(Qt::Key_6, Qt::KeypadModifier);
  bench.received->setFocus();
  bench.typing->setFocus();
  bench.type("y");
  bench.pump.idle(2000ms);
  EXPECT_TRUE(bytes_equal(bench.port.written(), std::string(200, 'x') + "y"));
}

TEST(term_paste, a_text_put_in_behind_a_box_waits_for_its_answer) {
  TermBench bench;
  bench.dialogs.expect_message("A box", [&bench] {
    bench.typing->type(QStringLiteral("late"));
    EXPECT_EQ(bench.port.written(), "");
  });
  bench.dialogs.message("A box");
  bench.pump.idle(10ms);
  QCoreApplication::processEvents();
  EXPECT_EQ(bench.port.written(), "late");
}

TEST(term_paste, a_paste_ends_when_another_screen_is_shown) {
  TermBench bench;
  bench.typing->type(QString(1000, u'x'));
  bench.open(ScreenCode::diag);
  const std::size_t sent = bench.port.written().size();
  bench.open(ScreenCode::term);
  bench.pump.idle(2000ms);
  EXPECT_EQ(bench.port.written().size(), sent);
}

TEST(term_paste, a_paste_ends_when_the_line_takes_no_more) {
  TermBench bench;
  bench.port.writable = false;
  bench.typing->type(QString(1000, u'x'));
  bench.pump.idle(2000ms);
  EXPECT_EQ(bench.typed_lines(), Lines{""});
}
