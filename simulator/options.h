#pragma once

#include "simulator/line.h"

#include <optional>
#include <string>
#include <vector>

namespace readersim {

/// What to simulate, as the command line says it.
struct Options {
  bool help = false;
  bool version = false;
  std::string name;                  ///< put in front of every line printed
  std::optional<Family> family;      ///< of all readers; without it an Orin, or a network of mixed families
  std::vector<int> network;          ///< addresses of a network; empty for one reader on a plain line
  int baud = 9600;                   ///< of the readers when they start
  std::optional<std::string> clock;  ///< YYMMDDhhmmssD; without it the time of this computer
  std::string link;                  ///< a symbolic link to keep to the pseudo-terminal
  std::string script;                ///< a file of console commands
  std::string control;               ///< a named pipe to make and read for commands
  bool console = true;               ///< whether standard input is read for commands
  bool demo = false;                 ///< whether the readers hold something from the start
  bool quiet = false;                ///< whether traffic is left out of what is printed
  Line::Options line;
};

/// Reads the arguments, the program's own name left out; throws Mistake with a text for people.
[[nodiscard]] Options parse_options(const std::vector<std::string>& arguments);
/// What --help prints.
[[nodiscard]] std::string usage();

}  // namespace readersim
