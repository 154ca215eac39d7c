#pragma once

#include "link/qt_event_pump.h"
#include "link/qt_serial_port.h"
#include "shell/main_window.h"
#include "shell/program.h"
#include "support/pty_bench.h"
#include "support/test_printer.h"
#include "support/window_hands.h"

#include <QTest>

#include <gtest/gtest.h>

/// The whole window on a pseudo-terminal as Com Port 1, with the test at its far end.
struct LineBench : WindowHands<LineBench> {
  Pty line;
  ScopedVariable port_1{"TARVOS_COM1", line.device()};
  QtSerialPort port;
  QtEventPump pump{port};
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};

  LineBench() {
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(program.services().link.comopen());
  }
};
