#pragma once

#include "shell/screen_table.h"

#include <chrono>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

// What a button of a reader configuration screen must do, as rows that read as a table of commands. Each row
// runs through every mode of the line.

namespace golden {

using namespace std::chrono_literals;
using Pauses = std::vector<std::chrono::milliseconds>;

/// Which acknowledge a network reader owes for each command.
enum class Acknowledge {
  command,      ///< awaited at every address, "Reader does not acknowledge command" without it
  one_address,  ///< not awaited of all readers, "Error communicating with reader" without it
};

/// Which of the port and the address is looked at first, when both are wrong.
enum class FirstLook { address, port };

struct Row {
  std::string name;
  ScreenCode screen = ScreenCode::none;
  std::string button;                                           ///< object name on that screen
  std::vector<std::pair<std::string, std::string>> boxes = {};  ///< typed before the click
  std::vector<std::string> choices = {};                        ///< options and check boxes clicked before
  std::vector<std::string> payloads = {};                       ///< without framing, in their order
  Acknowledge acknowledge = Acknowledge::command;
  FirstLook first_look = FirstLook::address;
  bool presence = false;     ///< asks one reader whether it is there
  std::string warning = {};  ///< the box before anything is sent
  std::string done = {};     ///< the box after success
  Pauses pauses = {};        ///< where no acknowledge is awaited
};

inline void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

inline std::string name_of(const testing::TestParamInfo<Row>& info) {
  return info.param.name;
}

/// Every button.
class Golden : public testing::TestWithParam<Row> {};
/// The buttons that ask whether the reader is there.
class GoldenPresence : public testing::TestWithParam<Row> {};

}  // namespace golden
