// The full-screen terminal among other windows: who has the port, and when its page begins anew.

#include "tools/fullterm.h"
#include "tools/fullterm_bench.h"

namespace {

using namespace std::chrono_literals;

}  // namespace

TEST(fullterm_windows, coming_back_from_its_own_box_clears_nothing) {
  FullBench bench;
  bench.type("abc");
  bench.printer.meanwhile = [&bench] {
    QWidget box;  // the print dialog takes the activation, as a dialog does
    box.show();
    bench.activate(box);
    EXPECT_FALSE(bench.full->isActiveWindow());
    bench.activate(bench.window);  // some window managers pass it on to the first window meanwhile
  };
  bench.press(Qt::Key_F8);
  bench.activate(*bench.full);
  EXPECT_EQ(bench.full->captured(), "abc");
  EXPECT_EQ(bench.drawn(), QStringLiteral("abc"));
  bench.receive("x");
  EXPECT_EQ(bench.drawn(), QStringLiteral("abcx"));
}

TEST(fullterm_windows, coming_back_from_a_box_that_another_operation_has_shown_clears_nothing) {
  FullBench bench;
  bench.type("abc");
  bench.dialogs.expect_message("Upload Complete", [&bench] {
    QWidget box;
    box.show();
    bench.activate(box);
    bench.activate(bench.window);
  });
  bench.program.services().clicks.run([&bench] { bench.dialogs.message("Upload Complete"); });
  bench.activate(*bench.full);
  EXPECT_EQ(bench.drawn(), QStringLiteral("abc"));
}

TEST(fullterm_windows, every_activation_starts_with_an_empty_screen_and_an_empty_capture_buffer) {
  FullBench bench;
  QWidget other;  // of this program or of another one
  other.show();
  for (QWidget* const between : {&other, static_cast<QWidget*>(&bench.window)}) {
    bench.type("abc");
    bench.activate(*between);
    bench.activate(*bench.full);
    EXPECT_EQ(bench.drawn(), QString());
    EXPECT_EQ(bench.full->captured(), "");
  }
}

TEST(fullterm_windows, what_comes_while_another_program_is_in_front_is_drawn) {
  FullBench bench;
  QWidget other;
  other.show();
  bench.activate(other);
  bench.receive("d");
  EXPECT_EQ(bench.drawn(), QStringLiteral("d"));
}

TEST(fullterm_windows, going_elsewhere_after_a_box_and_coming_back_later_starts_an_empty_page) {
  FullBench bench;
  bench.type("abc");
  bench.printer.meanwhile = [&bench] {
    QWidget box;
    box.show();
    bench.activate(box);
    bench.activate(bench.window);
  };
  bench.press(Qt::Key_F8);
  bench.activate(*bench.full);
  bench.activate(bench.window);
  bench.activate(*bench.full);
  EXPECT_EQ(bench.drawn(), QString());
}

TEST(fullterm_windows, full_screen_brings_a_minimised_window_back) {
  FullBench bench;
  bench.full->showMinimized();
  bench.click("Full  Screen");
  EXPECT_FALSE(bench.full->isMinimized());
}

TEST(fullterm_windows, coming_back_from_the_main_window_starts_an_empty_page) {
  FullBench bench;
  bench.type("abc");
  bench.activate(bench.window);
  bench.activate(*bench.full);
  EXPECT_EQ(bench.drawn(), QString());
  EXPECT_EQ(bench.full->captured(), "");
}

TEST(fullterm_windows, the_active_window_has_the_port) {
  FullBench bench;
  bench.receive("full ");
  EXPECT_EQ(bench.terminal_box()->text(), QString());
  bench.activate(bench.window);
  bench.receive("main ");
  EXPECT_EQ(bench.terminal_box()->text(), QStringLiteral("main "));
  EXPECT_EQ(bench.drawn(), QStringLiteral("full "));
  bench.activate(*bench.full);
  bench.receive("again");
  EXPECT_EQ(bench.terminal_box()->text(), QStringLiteral("main "));
  EXPECT_EQ(bench.drawn(), QStringLiteral("again"));
}

TEST(fullterm_windows, what_waits_when_the_port_changes_hands_is_shown_by_the_new_owner) {
  FullBench bench;
  bench.port.arrive("a");
  bench.pump.idle(1ms);  // arrived, and not yet drawn
  bench.activate(bench.window);
  bench.pump.idle(30ms);
  EXPECT_EQ(bench.terminal_box()->text(), QStringLiteral("a"));
  EXPECT_EQ(bench.drawn(), QString());
}

TEST(fullterm_windows, opening_it_empties_the_receive_buffer) {
  WindowBench bench;
  bench.port.arrive("old");
  bench.pump.idle(1ms);
  bench.open(ScreenCode::term);
  bench.program.services().receiver.stop();  // as long as the terminal has not read them
  bench.click("Full  Screen");
  EXPECT_EQ(bench.port.waiting(), "");
}

TEST(fullterm_windows, full_screen_on_an_open_window_brings_it_to_the_front) {
  FullBench bench;
  FullTermWindow* const before = bench.full;
  bench.activate(bench.window);
  bench.port.arrive("new");
  bench.pump.idle(0ms);
  bench.click("Full  Screen");
  EXPECT_TRUE(QTest::qWaitForWindowActive(bench.full));
  EXPECT_EQ(static_cast<TermScreen*>(bench.window.screen(ScreenCode::term))->full_screen(), before);
  bench.pump.idle(25ms);
  EXPECT_EQ(bench.drawn() + bench.terminal_box()->text(), QStringLiteral("new"));
}

TEST(fullterm_windows, closing_it_gives_the_port_back_to_the_terminal) {
  FullBench bench;
  bench.full->close();
  bench.receive("back");
  EXPECT_EQ(bench.terminal_box()->text(), QStringLiteral("back"));
}

TEST(fullterm_windows, closing_it_starts_no_terminal_on_a_screen_without_one) {
  FullBench bench;
  bench.activate(bench.window);
  bench.open(ScreenCode::diag);
  bench.activate(*bench.full);
  bench.full->close();
  bench.receive("reply");
  EXPECT_EQ(bench.port.waiting(), "reply");
  EXPECT_FALSE(bench.program.services().receiver.running());
}

TEST(fullterm_windows, closing_it_gives_the_port_back_to_the_hardware_test) {
  FullBench bench;
  bench.activate(bench.window);
  bench.open(ScreenCode::test);
  bench.activate(*bench.full);
  bench.full->close();
  bench.receive("reply");
  EXPECT_EQ(bench.find<TerminalView>("Text29")->text(), QStringLiteral("reply"));
}

TEST(fullterm_windows, opened_again_it_starts_empty_with_no_key_held) {
  FullBench bench;
  bench.type("abc");
  QTest::keyPress(bench.sink, Qt::Key_Alt);
  bench.full->close();
  bench.activate(bench.window);
  bench.click("Full  Screen");
  EXPECT_TRUE(QTest::qWaitForWindowActive(bench.full));
  EXPECT_EQ(bench.full->captured(), "");
  bench.type("x");
  EXPECT_EQ(bench.drawn(), QStringLiteral("x"));
}

TEST(fullterm_windows, losing_the_focus_while_alt_is_held_forgets_the_alt_code) {
  FullBench bench;
  QTest::keyPress(bench.sink, Qt::Key_Alt);
  QWidget other;
  other.show();
  bench.activate(other);
  bench.activate(*bench.full);
  QTest::keyRelease(bench.sink, Qt::Key_Alt);
  EXPECT_EQ(bench.port.written(), "");
}
