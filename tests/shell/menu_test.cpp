// The menu in the window: mouse, keys, and what a running transfer or poll refuses.

#include "shell/main_window.h"
#include "shell/menu_hands.h"
#include "shell/qt_dialogs.h"
#include "shell/twips.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTimer>

namespace {

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

}  // namespace

TEST(menu, menu_entries_are_stacked_without_gaps_on_teal) {
  WindowBench bench;
  const int height = twips_to_pixels(345, bench.window);
  for (int index = 0; index < 14; ++index) {
    EXPECT_EQ(bench.window.menu().entry(index)->geometry().top(), index * height);
    EXPECT_EQ(bench.window.menu().entry(index)->height(), height);
  }
  const QImage image = bench.window.menu().entry(3)->grab().toImage();
  EXPECT_EQ(image.pixelColor(image.width() - 2, 2), QColor(0x00, 0x80, 0x80));
}

TEST(menu, mouse_over_an_entry_highlights_it_in_blue_and_the_panel_takes_that_away) {
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

TEST(menu, an_entry_that_the_mouse_once_crossed_is_not_opened_by_enter_in_a_box) {
  WindowBench bench;
  QTest::mouseMove(bench.window.menu().entry(4));
  QTest::mouseMove(bench.find("com"), QPoint(3, 3));
  bench.find("reader_address")->setFocus();
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(menu, keys_walk_the_menu_and_enter_opens_the_highlighted_entry) {
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

TEST(menu, up_and_down_never_move_an_option_not_even_at_the_ends_of_the_menu) {
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

TEST(menu, up_and_down_reach_no_box_either) {
  WindowBench bench;
  auto* const box = bench.find<QLineEdit>("reader_address");
  box->setText(QStringLiteral("12"));
  box->setFocus();
  press(bench, Qt::Key_Up);
  press(bench, Qt::Key_Down);
  EXPECT_EQ(bench.window.focusWidget(), box);
  EXPECT_EQ(box->cursorPosition(), 2);
}

TEST(menu, no_menu_keys_while_the_terminal_shows) {
  WindowBench bench;
  bench.open(ScreenCode::term);
  press(bench, Qt::Key_Down);
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
}

TEST(menu, a_click_during_polling_on_the_protocol_test_is_refused_and_leaves_everything) {
  WindowBench bench;
  bench.open(ScreenCode::prottest);
  bench.program.services().busy.polling_on = true;
  bench.dialogs.expect_message("Polling must be stopped before changing screens");
  bench.open(ScreenCode::com);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::prottest);
  EXPECT_EQ(bench.window.menu().state().selected(), menu_index(ScreenCode::prottest));
}

TEST(menu, a_refusal_leaves_screen_selection_highlight_and_pointer) {
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

TEST(menu, a_highlight_made_by_keys_stays_after_a_refusal_wherever_the_mouse_rests) {
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

TEST(menu, an_assistive_client_that_reaches_past_a_box_waits_for_its_answer) {
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

TEST(menu, every_entry_is_highlighted_by_mouse_and_by_walking_down_and_up) {
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

TEST(menu, polling_elsewhere_does_not_block) {
  WindowBench bench;
  bench.program.services().busy.polling_on = true;
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::diag);
}

TEST(menu, a_click_during_a_download_is_refused) {
  WindowBench bench;
  bench.program.services().busy.downloading_on = true;
  bench.program.services().busy.uploading_on = true;  // the download is told first
  bench.dialogs.expect_message(
      "You are currently downloading and the download must finish before changing screens");
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(menu, a_click_during_an_upload_is_refused) {
  WindowBench bench;
  bench.program.services().busy.uploading_on = true;
  bench.dialogs.expect_message(
      "You are currently uploading and the upload must finish before changing screens");
  bench.open(ScreenCode::diag);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(menu, enter_opens_a_screen_without_asking_the_busy_flags) {
  WindowBench bench;
  bench.program.services().busy.downloading_on = true;
  bench.program.services().busy.uploading_on = true;
  press(bench, Qt::Key_Down);
  press(bench, Qt::Key_Enter);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::vellsetup);
}

TEST(menu, an_enter_held_down_opens_a_screen_and_starts_nothing_on_it) {
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

TEST(menu, a_key_held_down_is_one_press_though_the_window_system_tells_it_as_many) {
  WindowBench bench;
  const auto tell = [&bench](QEvent::Type type, int key, quint64 milliseconds) {
    QKeyEvent event(type, key, Qt::NoModifier, QStringLiteral(" "));
    event.setTimestamp(milliseconds);
    QCoreApplication::sendEvent(bench.window.windowHandle(), &event);
  };
  // A repetition is a release and a press of one moment, and nothing marks it.
  const auto hold = [&tell](int key, quint64 from) {
    tell(QEvent::KeyPress, key, from);
    for (quint64 moment = from + 600; moment < from + 800; moment += 40) {
      tell(QEvent::KeyRelease, key, moment);
      tell(QEvent::KeyPress, key, moment);
    }
    tell(QEvent::KeyRelease, key, from + 800);
  };
  for (int step = 0; step < menu_index(ScreenCode::diag); ++step) {
    press(bench, Qt::Key_Down);
  }
  hold(Qt::Key_Return, 1000);
  ASSERT_EQ(bench.window.screen_code(), ScreenCode::diag);
  EXPECT_EQ(bench.port.written(), "");
  bench.button("Test Relay")->setFocus();
  hold(Qt::Key_Space, 3000);
  EXPECT_EQ(bench.port.written(), "!01\r");
  hold(Qt::Key_Space, 3900);  // pressed again
  EXPECT_EQ(bench.port.written(), "!01\r!01\r");
}

TEST(menu, a_mouse_that_leaves_the_menu_for_another_window_leaves_no_highlight) {
  WindowBench bench;
  QTest::mouseMove(bench.window.menu().entry(4));
  ASSERT_EQ(bench.window.menu().state().hovered(), 4);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&bench.window.menu(), &leave);
  bench.find("reader_address")->setFocus();
  press(bench, Qt::Key_Return);
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
}

TEST(menu, mouse_over_a_frame_or_a_control_of_the_panel_takes_the_highlight_away) {
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

TEST(menu, mouse_over_the_empty_end_of_the_menu_takes_the_highlight_away) {
  WindowBench bench;
  const MenuEntry* const last = bench.window.menu().entry(MenuState::entry_count - 1);
  QTest::mouseMove(bench.window.menu().entry(MenuState::entry_count - 1));
  ASSERT_EQ(bench.window.menu().state().hovered(), MenuState::entry_count - 1);
  QTest::mouseMove(&bench.window.menu(), last->geometry().bottomLeft() + QPoint(20, 30));
  EXPECT_EQ(bench.window.menu().state().hovered(), std::nullopt);
}

TEST(menu, mouse_over_any_screen_panel_takes_the_highlight_away) {
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
