#pragma once

#include "shell/main_window.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// What a technician does on the reader setup screens, and what a reader must be like afterwards.

namespace config_scripts {

using ScreenCode::diag;
using ScreenCode::keshsetup;
using ScreenCode::keshutil;
using ScreenCode::orinparam;
using ScreenCode::quorsetup;
using ScreenCode::symbology;
using ScreenCode::vellsetup;

/// Boxes filled, choices made, a button pressed, and the boxes that follow.
struct Step {
  ScreenCode screen;
  std::vector<std::pair<std::string, std::string>> boxes;
  std::vector<std::string> choices;
  std::string button;
  std::vector<std::string> messages;
};

struct Wanted {
  std::string name;  ///< as the reader's report has it
  std::string value;
  std::string before = {};  ///< what it is set to beforehand, so that only the steps can bring the value
};

/// Steps and all that they change.
struct Work {
  std::vector<Step> steps;
  std::vector<Wanted> wanted;
};

inline Step press(ScreenCode screen, std::string button) {
  return {screen, {}, {}, std::move(button), {}};
}
inline Step fill(ScreenCode screen, std::string box, std::string text, std::string button) {
  return {screen, {{std::move(box), std::move(text)}}, {}, std::move(button), {}};
}
inline Step choose(ScreenCode screen, std::vector<std::string> choices, std::string button,
                   std::vector<std::string> messages = {}) {
  return {screen, {}, std::move(choices), std::move(button), std::move(messages)};
}

/// A control of the screen on show by its object name.
inline QWidget* control_of(const MainWindow& window, const std::string& object_name) {
  auto* const widget =
      window.screen(window.screen_code())->findChild<QWidget*>(QString::fromStdString(object_name));
  if (widget == nullptr) {
    throw std::runtime_error("no control " + object_name);
  }
  return widget;
}

/// Types as a person does who replaces what stands in a box.
inline void retype(QWidget* box, const std::string& text) {
  QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, QString::fromStdString(text));
}

template <typename Bench>
void perform(Bench& bench, const Step& step) {
  bench.open(step.screen);
  for (const auto& [box, text] : step.boxes) {
    retype(control_of(bench.window, box), text);
  }
  for (const std::string& choice : step.choices) {
    bench.click(control_of(bench.window, choice));
  }
  for (const std::string& message : step.messages) {
    bench.dialogs.expect_message(message);
  }
  bench.click(control_of(bench.window, step.button));
}

/// What a simulated reader says of itself under that name.
template <typename Readers>
std::string told(Readers& readers, int address, const std::string& name) {
  const std::string text = "\n" + readers.console("show " + std::to_string(address));
  const std::size_t at = text.find("\n" + name + ": ");
  if (at == std::string::npos) {
    throw std::runtime_error("the reader tells no " + name);
  }
  const std::size_t from = at + name.size() + 3;
  return text.substr(from, text.find('\n', from) - from);
}

/// Sets everything to another value than the wanted one, behind the back of the screens.
template <typename Readers>
void unsettle(Readers& readers, int address, const std::vector<Wanted>& wanted) {
  const std::string reader = "set " + std::to_string(address) + " ";
  for (const Wanted& each : wanted) {
    EXPECT_EQ(readers.console(reader + each.name + " " + each.before), "");
  }
  for (const auto& [name, value, before] : wanted) {
    EXPECT_EQ(told(readers, address, name), before) << name;
    EXPECT_NE(before, value) << name;
  }
}

}  // namespace config_scripts
