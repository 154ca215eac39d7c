#pragma once

#include "shell/main_window.h"
#include "shell/program.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_printer.h"
#include "support/test_pump.h"
#include "support/window_hands.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

/// The whole window on a fake port at virtual time, after start-up, shown and active.
struct WindowBench : WindowHands<WindowBench> {
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

  void use_network(std::string_view address) {
    program.services().settings.network_mode = true;
    program.services().settings.reader_address = address;
  }
};
