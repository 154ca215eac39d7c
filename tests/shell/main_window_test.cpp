#include "shell/main_window.h"

#include "shell/menu_hands.h"
#include "shell/twips.h"

#include <QAccessible>
#include <QScreen>
#include <QScrollArea>

namespace {

int visible_screens(WindowBench& bench) {
  int count = 0;
  for (const ScreenEntry& entry : screen_table) {
    count += bench.window.screen(entry.code)->isVisible() ? 1 : 0;
  }
  return count;
}

QRect place_in_window(WindowBench& bench, const char* name) {
  QWidget* const widget = bench.find(name);
  return {widget->mapTo(&bench.window, QPoint(0, 0)), widget->size()};
}

}  // namespace

TEST(main_window, title_is_to_the_letter) {
  WindowBench bench;
  const QString gap12(12, u' ');
  const QString gap16(16, u' ');
  EXPECT_EQ(bench.window.windowTitle(), QStringLiteral(" Tarvos") + gap12 +
                                            QStringLiteral("Vell  Orin/Orinta  Kesh  Quor  SERIES") + gap16 +
                                            QStringLiteral("READER  UTILITY"));
}

TEST(main_window, starts_on_the_communication_screen_with_the_first_entry_green_and_pointed_at) {
  WindowBench bench;
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
  EXPECT_TRUE(bench.find("com")->isVisible());
  EXPECT_EQ(visible_screens(bench), 1);
  EXPECT_EQ(bench.window.menu().entry(0)->text_colour(), green);
  EXPECT_EQ(bench.window.menu().entry(1)->text_colour(), black);
  EXPECT_EQ(bench.find("pointer")->y(), 0);
  EXPECT_EQ(bench.find("pointer")->x(), twips_to_pixels(150, bench.window));
  EXPECT_EQ(bench.port.opened_with, std::vector<std::string>{"1:9600,N,8,1"});
}

TEST(main_window, a_failed_first_open_shows_nothing) {
  WindowBench bench(false);
  EXPECT_TRUE(bench.dialogs.shown.empty());
  EXPECT_FALSE(bench.program.services().link.comopen());
}

TEST(main_window, every_entry_opens_its_screen_with_its_code) {
  struct Row {
    const char* caption;
    const char* name;
    int code;
  };
  const std::array<Row, 14> rows{{{"Communication", "com", 3},
                                  {"Vell Setup", "vellsetup", 4},
                                  {"Orin/Orinta Setup", "orinparam", 5},
                                  {"Kesh Setup", "keshsetup", 12},
                                  {"Quor Setup", "quorsetup", 11},
                                  {"Terminal Mode", "term", 2},
                                  {"Protocol Test", "prottest", 7},
                                  {"Vell Hardware Test", "test", 1},
                                  {"Barcode/Mag Setup", "symbology", 14},
                                  {"Diagnostics", "diag", 13},
                                  {"Orin/Orinta Utilities", "orintautil", 9},
                                  {"Kesh/Quor Utilities", "keshutil", 8},
                                  {"ASCII Chart", "asciichart", 10},
                                  {"General Info", "general", 6}}};
  WindowBench bench;
  for (int index = 0; index < 14; ++index) {
    const Row& row = rows.at(static_cast<std::size_t>(index));
    SCOPED_TRACE(row.caption);
    EXPECT_EQ(bench.window.menu().entry(index)->text(), QLatin1String(row.caption));
    bench.click_menu(index);
    EXPECT_EQ(static_cast<int>(bench.window.screen_code()), row.code);
    EXPECT_TRUE(bench.find(row.name)->isVisible());
    EXPECT_EQ(visible_screens(bench), 1);
    EXPECT_EQ(bench.window.menu().state().selected(), index);
    EXPECT_EQ(bench.window.menu().entry(index)->text_colour(), green);
    EXPECT_EQ(bench.find("pointer")->y(), bench.window.menu().entry(index)->y());
  }
}

TEST(main_window, each_window_procedure_shows_its_screen_alone_and_without_the_menu) {
  struct Row {
    void (MainWindow::*procedure)();
    const char* screen;
    ScreenCode code;
  };
  const std::array<Row, 14> rows{{{&MainWindow::com_window, "com", ScreenCode::com},
                                  {&MainWindow::vellsetup_window, "vellsetup", ScreenCode::vellsetup},
                                  {&MainWindow::orinparam_window, "orinparam", ScreenCode::orinparam},
                                  {&MainWindow::keshsetup_window, "keshsetup", ScreenCode::keshsetup},
                                  {&MainWindow::quorsetup_window, "quorsetup", ScreenCode::quorsetup},
                                  {&MainWindow::term_window, "term", ScreenCode::term},
                                  {&MainWindow::prottest_window, "prottest", ScreenCode::prottest},
                                  {&MainWindow::test_window, "test", ScreenCode::test},
                                  {&MainWindow::symbology_window, "symbology", ScreenCode::symbology},
                                  {&MainWindow::diag_window, "diag", ScreenCode::diag},
                                  {&MainWindow::orintautil_window, "orintautil", ScreenCode::orintautil},
                                  {&MainWindow::keshutil_window, "keshutil", ScreenCode::keshutil},
                                  {&MainWindow::asciichart_window, "asciichart", ScreenCode::asciichart},
                                  {&MainWindow::general_window, "general", ScreenCode::general}}};
  WindowBench bench;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.screen);
    EXPECT_TRUE(bench.window.nowindow());
    EXPECT_EQ(visible_screens(bench), 0);
    (bench.window.*row.procedure)();
    EXPECT_EQ(bench.window.screen_code(), row.code);
    EXPECT_TRUE(bench.find(row.screen)->isVisible());
    EXPECT_EQ(visible_screens(bench), 1);
    EXPECT_EQ(bench.window.menu().state().selected(), 0);
  }
  for (const Row& row : rows) {  // from another screen
    SCOPED_TRACE(row.screen);
    (bench.window.*row.procedure)();
    EXPECT_TRUE(bench.find(row.screen)->isVisible());
    EXPECT_EQ(visible_screens(bench), 1);
  }
}

TEST(main_window, panels_fill_the_window_right_of_the_menu_and_follow_its_size) {
  WindowBench bench;
  const int left = twips_to_pixels(2370, bench.window);
  EXPECT_EQ(place_in_window(bench, "com"),
            QRect(left, 0, bench.window.width() - left, bench.window.height()));
  bench.window.resize(bench.window.size() + QSize(80, 60));
  QCoreApplication::processEvents();
  EXPECT_EQ(place_in_window(bench, "com"),
            QRect(left, 0, bench.window.width() - left, bench.window.height()));
}

TEST(main_window, windows_screens_and_the_selected_entry_are_told_to_assistive_clients) {
  WindowBench bench;
  QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&bench.window);
  EXPECT_EQ(window->role(), QAccessible::Window);
  EXPECT_EQ(window->text(QAccessible::Name), bench.window.windowTitle());
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&bench.window.menu())->text(QAccessible::Name),
            QStringLiteral("Menu"));
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    QAccessibleInterface* const screen =
        QAccessible::queryAccessibleInterface(bench.window.screen(bench.window.screen_code()));
    EXPECT_EQ(screen->text(QAccessible::Name), bench.window.menu().entry(index)->text());
    for (int other = 0; other < MenuState::entry_count; ++other) {
      EXPECT_EQ(bench.window.menu().entry(other)->accessibleDescription(),
                other == index ? QStringLiteral("selected") : QString());
    }
  }
}

TEST(main_window, f1_and_f2_press_nothing_while_the_terminal_shows) {
  WindowBench bench;
  for (const ScreenCode hidden : {ScreenCode::test, ScreenCode::prottest}) {
    bench.open(hidden);
    bench.open(ScreenCode::term);
    press(bench, Qt::Key_F1);
    press(bench, Qt::Key_F2);
    EXPECT_EQ(bench.window.screen_code(), ScreenCode::term);
    EXPECT_EQ(bench.port.written(), "");
    EXPECT_FALSE(bench.program.services().busy.polling_on);
  }
}

TEST(main_window, f1_and_f2_do_nothing_on_other_screens) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    const ScreenCode code = bench.window.screen_code();
    if (code == ScreenCode::test || code == ScreenCode::prottest || code == ScreenCode::term) {
      continue;
    }
    press(bench, Qt::Key_F1);
    press(bench, Qt::Key_F2);
    EXPECT_EQ(bench.port.written(), "") << index;
    EXPECT_EQ(bench.window.screen_code(), code);
  }
}

TEST(main_window, a_panel_that_does_not_fit_scrolls_to_its_last_control) {
  WindowBench bench;
  bench.open(ScreenCode::vellsetup);
  bench.window.resize(bench.window.minimumSize());
  auto* const area = bench.window.findChild<QScrollArea*>();
  EXPECT_GE(area->widget()->height(), bench.find("vellsetup")->minimumSizeHint().height());
  QWidget* const last = bench.button("19200 Baud");
  last->setFocus();
  area->ensureWidgetVisible(last);
  EXPECT_TRUE(area->viewport()->rect().contains(last->mapTo(area->viewport(), last->rect().center())));
}

TEST(main_window, starts_no_larger_than_the_screen) {
  WindowBench bench;
  EXPECT_LE(bench.window.width(), bench.window.QWidget::screen()->availableSize().width());
  EXPECT_LE(bench.window.height(), bench.window.QWidget::screen()->availableSize().height());
}

TEST(main_window, changing_screens_keeps_the_port_open_and_stops_the_terminal) {
  WindowBench bench;
  bench.program.services().receiver.start([](const ReceivedLines&) {});
  bench.open(ScreenCode::diag);
  EXPECT_FALSE(bench.program.services().receiver.running());
  EXPECT_TRUE(bench.port.is_open);
  EXPECT_EQ(bench.port.opened_with.size(), 1U);
}

TEST(main_window, activation_takes_the_port_back_from_the_full_screen_terminal) {
  WindowBench bench;
  bench.program.services().receiver.set_screenactive(true);
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(bench.program.services().receiver.screenactive());
  bench.window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&bench.window));
  EXPECT_FALSE(bench.program.services().receiver.screenactive());
}

TEST(main_window, closing_closes_the_port_and_ends_every_wait) {
  WindowBench bench;
  bench.window.close();
  EXPECT_FALSE(bench.port.is_open);
  EXPECT_FALSE(bench.program.services().link.comopen());
  EXPECT_THROW(bench.program.services().pump.yield(), ProgramClosing);
}

TEST(main_window, closing_in_the_middle_of_a_reply_ends_the_operation_without_a_box) {
  WindowBench bench;
  bench.open(ScreenCode::diag);
  bench.pump.after(std::chrono::milliseconds(30), [&bench] { bench.window.close(); });
  bench.click("Reader Identification");
  EXPECT_TRUE(bench.dialogs.shown.empty());
  EXPECT_FALSE(bench.port.is_open);
}

TEST(main_window, closing_in_the_middle_of_a_pause_ends_the_operation_without_a_box) {
  WindowBench bench;
  bench.use_network("5");
  bench.open(ScreenCode::diag);
  bench.pump.after(std::chrono::milliseconds(30), [&bench] { bench.window.close(); });
  bench.click("Test Relay");
  EXPECT_TRUE(bench.dialogs.shown.empty());
  EXPECT_EQ(bench.pump.elapsed(), std::chrono::milliseconds(30));
}
