#pragma once

#include "shell/program.h"
#include "support/scripted_dialogs.h"
#include "support/sim_port.h"
#include "support/test_folder.h"
#include "support/test_printer.h"
#include "support/window_hands.h"
#include "whole/config_steps.h"

#include <filesystem>
#include <string>

/// One reader on a network, at address 5.
inline readersim::Options network_of(readersim::Family family) {
  readersim::Options options;
  options.network = {5};
  options.family = family;
  return options;
}

/// One reader on a plain line.
inline readersim::Options plain_line_of(readersim::Family family) {
  readersim::Options options;
  options.family = family;
  return options;
}

/// The whole window on simulated readers at virtual time.
struct SimBench : WindowHands<SimBench> {
  TestPump pump;
  SimPort port;
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};
  TestFolder folder;

  template <typename Readers>
  explicit SimBench(const Readers& readers) : port(pump, readers) {
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  [[nodiscard]] std::filesystem::path path() const { return folder.path("uploadlog.txt"); }
  [[nodiscard]] std::string file() const { return folder.read("uploadlog.txt"); }
};
