#include "shell/main_window.h"

#include "shell/qt_dialogs.h"
#include "shell/twips.h"
#include "support/window_bench.h"

#include <QAccessible>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>

namespace {

const QColor black(0x00, 0x00, 0x00);
const QColor green(0x00, 0xFF, 0x01);
const QColor blue(0x00, 0x00, 0xFF);

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

/// For the tests that follow: the mouse is one for all windows.
void move_mouse_away(QWidget& window) {
  QTest::mouseMove(&window, QPoint(window.width() / 2, window.height() - 1));
}

void press(WindowBench& bench, Qt::Key key) {
  QWidget* const focus = bench.window.focusWidget();
  QTest::keyClick(focus != nullptr ? focus : &bench.window, key);
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

TEST(main_window, menu_entries_are_stacked_without_gaps_on_teal) {
  WindowBench bench;
  const int height = twips_to_pixels(345, bench.window);
  for (int index = 0; index < 14; ++index) {
    EXPECT_EQ(bench.window.menu().entry(index)->geometry().top(), index * height);
    EXPECT_EQ(bench.window.menu().entry(index)->height(), height);
  }
  const QImage image = bench.window.menu().entry(3)->grab().toImage();
  EXPECT_EQ(image.pixelColor(image.width() - 2, 2), QColor(0x00, 0x80, 0x80));
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

TEST(main_window, mouse_over_an_entry_highlights_it_in_blue_and_the_panel_takes_that_away) {
  WindowBench bench;
  QTest::mouseMove(bench.window.menu().entry(4));
  EXPECT_EQ(bench.window.menu().entry(4)->text_colour(), blue);
  EXPECT_EQ(bench.window.menu().state().hovered(), 4);
  EXPECT_EQ(bench.find("pointer")->y(), bench.window.menu().entry(4)->y());
  QTest::mouseMove(bench.find("com"), QPoint(3, 3));
  EXPECT_EQ(bench.window.menu().entry(4)->text_colour(), black);
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
  EXPECT_EQ(bench.find("pointer")->y(), 0);
}

TEST(main_window, an_entry_that_the_mouse_once_crossed_is_not_opened_by_enter_in_a_box) {
  WindowBench bench;
  QTest::mouseMove(bench.window.menu().entry(4));
  QTest::mouseMove(bench.find("com"), QPoint(3, 3));
  bench.find("reader_address")->setFocus();
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(main_window, keys_walk_the_menu_and_enter_opens_the_highlighted_entry) {
  WindowBench bench;
  press(bench, Qt::Key_Down);
  press(bench, Qt::Key_Down);
  EXPECT_EQ(bench.window.menu().state().hovered(), 2);
  press(bench, Qt::Key_Up);
  EXPECT_EQ(bench.window.menu().state().hovered(), 1);
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::vellsetup);
  EXPECT_EQ(bench.window.menu().state().selected(), 1);
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
}

TEST(main_window, up_and_down_never_move_an_option_not_even_at_the_ends_of_the_menu) {
  WindowBench bench;
  bench.find("comm_port_0")->setFocus();
  press(bench, Qt::Key_Up);  // the first entry is selected: there is nowhere to go
  bench.find("comm_port_0")->setFocus();
  for (int step = 0; step < 20; ++step) {
    press(bench, Qt::Key_Down);
  }
  EXPECT_EQ(bench.window.menu().state().hovered(), MenuState::entry_count - 1);
  EXPECT_TRUE(bench.find<QRadioButton>("comm_port_0")->isChecked());
  EXPECT_EQ(bench.port.opened_with.size(), 1U);
}

TEST(main_window, up_and_down_reach_no_box_either) {
  WindowBench bench;
  auto* const box = bench.find<QLineEdit>("reader_address");
  box->setText(QStringLiteral("12"));
  box->setFocus();
  press(bench, Qt::Key_Up);
  press(bench, Qt::Key_Down);
  EXPECT_EQ(bench.window.focusWidget(), box);
  EXPECT_EQ(box->cursorPosition(), 2);
}

TEST(main_window, no_menu_keys_while_the_terminal_shows) {
  WindowBench bench;
  bench.open(ScreenCode::term);
  press(bench, Qt::Key_Down);
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
}

TEST(main_window, a_click_during_polling_on_the_protocol_test_is_refused_and_leaves_everything) {
  WindowBench bench;
  bench.open(ScreenCode::prottest);
  bench.program.services().busy.polling_on = true;
  bench.dialogs.expect_message("Polling must be stopped before changing screens");
  bench.open(ScreenCode::com);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
  EXPECT_EQ(bench.window.menu().state().selected(), menu_index(ScreenCode::prottest));
}

/// The window with real boxes.
struct BoxBench : WindowHands<BoxBench> {
  TestPump pump;
  FakePort port{pump};
  QtDialogs dialogs{pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};

  BoxBench() {
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  /// Does something while the next box is open, then answers it.
  void at_the_box(std::function<void()> action) {
    auto* const look = new QTimer(&window);
    QObject::connect(look, &QTimer::timeout, look, [look, action = std::move(action)] {
      if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        look->stop();
        action();
        box->button(QMessageBox::Ok)->click();
      }
    });
    look->start(1);
  }
};

TEST(main_window, a_refusal_leaves_screen_selection_highlight_and_pointer) {
  for (bool BusyFlags::*const flag :
       {&BusyFlags::polling_on, &BusyFlags::downloading_on, &BusyFlags::uploading_on}) {
    BoxBench bench;
    const MenuColumn& menu = bench.window.menu();
    const MenuEntry* const tested = menu.entry(menu_index(ScreenCode::prottest));
    MenuEntry* const asked_for = menu.entry(menu_index(ScreenCode::diag));
    bench.open(ScreenCode::prottest);
    bench.program.services().busy.*flag = true;
    QTest::mouseMove(asked_for);
    const QWidget* const pointer = menu.findChild<QWidget*>(QStringLiteral("pointer"));
    const auto expect_unchanged = [&](const char* when) {
      SCOPED_TRACE(when);
      EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
      EXPECT_EQ(tested->text_colour(), green);
      EXPECT_EQ(asked_for->text_colour(), blue);
      EXPECT_EQ(pointer->y(), asked_for->y());
    };
    int boxes = 0;
    bench.at_the_box([&] {
      ++boxes;
      // The toolkit tells the menu that the mouse has left it for the box.
      QEvent leave(QEvent::Leave);
      QCoreApplication::sendEvent(const_cast<MenuColumn*>(&menu), &leave);
      expect_unchanged("at the box");
    });
    expect_unchanged("before the click");
    bench.open(ScreenCode::diag);
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
    EXPECT_EQ(tested->text_colour(), green);
    move_mouse_away(bench.window);
  }
}

TEST(main_window, a_highlight_made_by_keys_stays_after_a_refusal_wherever_the_mouse_rests) {
  BoxBench bench;
  const MenuColumn& menu = bench.window.menu();
  bench.program.services().busy.uploading_on = true;
  QTest::keyClick(&bench.window, Qt::Key_Down);
  ASSERT_EQ(menu.state().hovered(), 1);
  ASSERT_FALSE(menu.under_mouse());
  bench.at_the_box([] {});
  menu.entry(1)->setFocus();
  QTest::keyClick(menu.entry(1), Qt::Key_Space);
  QCoreApplication::processEvents();
  EXPECT_EQ(menu.state().hovered(), 1);
}

TEST(main_window, an_assistive_client_that_reaches_past_a_box_waits_for_its_answer) {
  BoxBench bench;
  bench.program.services().busy.downloading_on = true;
  bench.at_the_box([&bench] {
    bench.program.services().busy.downloading_on = false;
    QAccessible::queryAccessibleInterface(bench.window.menu().entry(menu_index(ScreenCode::diag)))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
  });
  bench.open(ScreenCode::vellsetup);
  EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.window.screen_code() == ScreenCode::diag; }));
  move_mouse_away(bench.window);
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

TEST(main_window, every_entry_is_highlighted_by_mouse_and_by_walking_down_and_up) {
  WindowBench bench;
  const MenuColumn& menu = bench.window.menu();
  for (int index = 1; index < MenuState::entry_count; ++index) {
    QTest::mouseMove(menu.entry(index));
    EXPECT_EQ(menu.entry(index)->text_colour(), blue) << index;
    EXPECT_EQ(bench.find("pointer")->y(), menu.entry(index)->y());
  }
  bench.window.menu().nohighlights();
  for (int index = 1; index < MenuState::entry_count; ++index) {
    press(bench, Qt::Key_Down);
    EXPECT_EQ(menu.state().hovered(), index);
  }
  press(bench, Qt::Key_Down);
  EXPECT_EQ(menu.state().pointer(), MenuState::entry_count - 1) << "the end";
  for (int index = MenuState::entry_count - 2; index > 0; --index) {
    press(bench, Qt::Key_Up);
    EXPECT_EQ(menu.state().hovered(), index);
  }
  for (int index = 1; index < MenuState::entry_count - 1; ++index) {
    press(bench, Qt::Key_Down);
  }
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::general);
  move_mouse_away(bench.window);
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

TEST(main_window, polling_elsewhere_does_not_block) {
  WindowBench bench;
  bench.program.services().busy.polling_on = true;
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::diag);
}

TEST(main_window, a_click_during_a_download_is_refused) {
  WindowBench bench;
  bench.program.services().busy.downloading_on = true;
  bench.program.services().busy.uploading_on = true;  // the download is told first
  bench.dialogs.expect_message(
      "You are currently downloading and the download must finish before changing screens");
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(main_window, a_click_during_an_upload_is_refused) {
  WindowBench bench;
  bench.program.services().busy.uploading_on = true;
  bench.dialogs.expect_message(
      "You are currently uploading and the upload must finish before changing screens");
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(main_window, enter_opens_a_screen_without_asking_the_busy_flags) {
  WindowBench bench;
  bench.program.services().busy.downloading_on = true;
  bench.program.services().busy.uploading_on = true;
  press(bench, Qt::Key_Down);
  press(bench, Qt::Key_Enter);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::vellsetup);
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

TEST(main_window, an_enter_held_down_opens_a_screen_and_starts_nothing_on_it) {
  WindowBench bench;
  for (int step = 0; step < menu_index(ScreenCode::diag); ++step) {
    press(bench, Qt::Key_Down);
  }
  press(bench, Qt::Key_Return);
  ASSERT_EQ(bench.window.screen_code(), ScreenCode::diag);
  for (int repeat = 0; repeat < 5; ++repeat) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QCoreApplication::sendEvent(bench.window.focusWidget(), &event);
  }
  EXPECT_EQ(bench.port.written(), "");
}

TEST(main_window, a_mouse_that_leaves_the_menu_for_another_window_leaves_no_highlight) {
  WindowBench bench;
  QTest::mouseMove(bench.window.menu().entry(4));
  ASSERT_EQ(bench.window.menu().state().hovered(), 4);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&bench.window.menu(), &leave);
  bench.find("reader_address")->setFocus();
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(main_window, mouse_over_a_frame_or_a_control_of_the_panel_takes_the_highlight_away) {
  WindowBench bench;
  for (const char* name : {"baud_rate", "reader_address", "comm_port_2"}) {
    press(bench, Qt::Key_Down);
    ASSERT_NE(bench.window.menu().state().hovered(), std::nullopt);
    QWidget* const widget = bench.find(name);
    const QPoint place = widget->mapTo(&bench.window, widget->rect().center());
    QTest::mouseMove(bench.window.windowHandle(), place);
    QCoreApplication::processEvents();
    EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt) << name;
  }
}

TEST(main_window, mouse_over_any_screen_panel_takes_the_highlight_away) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    const int other = (index + 1) % MenuState::entry_count;
    QTest::mouseMove(bench.window.menu().entry(other));
    ASSERT_EQ(bench.window.menu().state().hovered(), other);
    QTest::mouseMove(bench.window.screen(bench.window.screen_code()), QPoint(1, 1));
    EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt) << index;
  }
  bench.open(ScreenCode::prottest);
  QTest::mouseMove(bench.window.menu().entry(0));
  QTest::mouseMove(bench.find<QAbstractScrollArea>("protdisp")->viewport());
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
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
