#pragma once

#include "shell/program.h"
#include "support/scripted_dialogs.h"
#include "support/sim_port.h"
#include "support/test_printer.h"
#include "whole/config_steps.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>

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
struct SimBench {
  TestPump pump;
  SimPort port;
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};
  QTemporaryDir folder;

  template <typename Readers>
  explicit SimBench(const Readers& readers) : port(pump, readers) {
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  void click_menu(int index) { QTest::mouseClick(window.menu().entry(index), Qt::LeftButton); }
  void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, widget->height() / 2));
  }
  void use_network() {
    click_menu(0);
    click(config_scripts::control_of(window, "network_mode_0"));
    config_scripts::retype(config_scripts::control_of(window, "reader_address"), "5");
  }
  [[nodiscard]] std::filesystem::path path() const {
    return std::filesystem::path(folder.path().toStdString()) / "uploadlog.txt";
  }
  [[nodiscard]] std::string file() const {
    std::ifstream stream(path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};
