#pragma once

#include "shell/main_window.h"
#include "shell/program.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_printer.h"
#include "support/test_pump.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

/// The whole window on a fake port at virtual time, after start-up, shown and active.
struct WindowBench {
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};

  explicit WindowBench(bool port_opens = true) {
    port.openable = port_opens;
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  /// The widget of that object name; the test fails when there is none.
  template <typename Widget = QWidget>
  Widget* find(const char* object_name) {
    auto* const widget = window.findChild<Widget*>(QLatin1String(object_name));
    EXPECT_NE(widget, nullptr) << object_name;
    return widget;
  }

  /// The button of that caption on the screen on show.
  QPushButton* button(const char* caption) {
    for (auto* const candidate : window.screen(window.screen_code())->findChildren<QPushButton*>()) {
      if (candidate->text() == QLatin1String(caption)) {
        return candidate;
      }
    }
    ADD_FAILURE() << "no button " << caption;
    return nullptr;
  }

  /// Clicks near the left end, where options and check boxes have their indicator.
  void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, widget->height() / 2));
  }
  void click(const char* caption) { click(button(caption)); }
  /// Opens a screen by its menu entry, counted from 0.
  void click_menu(int index) { click(window.menu().entry(index)); }
  void use_network(std::string_view address) {
    program.services().settings.network_mode = true;
    program.services().settings.reader_address = address;
  }
};
