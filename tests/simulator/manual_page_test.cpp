// The manual page tells the same as the program: a word that one has and the other lacks is a mistake.

#include "simulator/console.h"
#include "simulator/options.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>

namespace {

std::string manual_page() {
  std::ifstream stream{TARVOS_SOURCES "/packaging/man/readersim.1"};
  return {std::istreambuf_iterator<char>{stream}, {}};
}

std::set<std::string> words(const std::string& text, const char* pattern) {
  std::set<std::string> found;
  const std::regex expression{pattern};
  for (std::sregex_iterator at{text.begin(), text.end(), expression}, end; at != end; ++at) {
    found.insert((*at)[1]);
  }
  return found;
}

TEST(ManualPage, has_the_options_of_the_help_and_no_others) {
  auto told = words(readersim::usage(), R"(\n  --([a-z-]+))");
  told.insert("version");  // stands behind --help on one line
  EXPECT_EQ(words(manual_page(), R"(Fl -([a-z-]+))"), told);
}

TEST(ManualPage, has_every_console_command) {
  const auto page = words(manual_page(), R"(Ic ([a-z]+))");
  for (const std::string& command : words(readersim::Console::help(), R"(\n  ([a-z]+) (?=.*  ))")) {
    const bool fault = std::any_of(readersim::all_faults().begin(), readersim::all_faults().end(),
                                   [&](const auto& each) { return each.name == command; });
    const bool told = page.contains(command) || manual_page().find("Ql " + command) != std::string::npos ||
                      manual_page().find(", Ic " + command) != std::string::npos;
    EXPECT_TRUE(fault || told) << command;
  }
}

TEST(ManualPage, has_every_fault) {
  for (const readersim::FaultTraits& fault : readersim::all_faults()) {
    EXPECT_NE(manual_page().find("Ql " + std::string{fault.name}), std::string::npos) << fault.name;
  }
}

}  // namespace
