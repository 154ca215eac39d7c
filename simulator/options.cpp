#include "simulator/options.h"

#include "simulator/console.h"
#include "simulator/wire.h"
#include "simulator/words.h"

#include <algorithm>
#include <cstdint>

namespace readersim {
namespace {

constexpr std::string_view introduction = R"(readersim - simulated card and badge readers on a serial line

Usage: readersim [options]

It opens a pseudo-terminal, prints its path, and plays one reader on a plain
line, or up to 127 readers on a network, until it is told to quit. A program
that talks to readers opens that path as its serial port. Every frame is
printed with its time, direction (pc > reader, reader > pc), bytes and meaning.

  --family NAME     Vell, Orin, Orinta, "Ferro Kesh", "Glint Kesh" or Quor
                    (without it an Orin, or on a network all of them in turn)
  --network LIST    a network of readers at these addresses, for example 0-126
                    or 1,5,20-29; they start in protocol mode
  --link PATH       keep a symbolic link to the pseudo-terminal at PATH
  --baud RATE       the readers start at 1200, 2400, 4800, 9600 or 19200 baud
                    (9600)
  --pace            bytes take their time, as on a real line
  --delay MS        from a command to its answer, 0 to 10000 milliseconds (20)
  --clock TIME      start the readers' clocks at YYMMDDhhmmssD, D from
                    1 Monday to 7 Sunday (the time of this computer)
  --demo            give the readers lists, logs and records to begin with
  --seed N          random bytes and made-up records are the same for the
                    same N (1)
  --script FILE     obey the console commands in FILE; there, "wait 2.5" waits
                    seconds and "repeat" starts again from the top
  --control PATH    obey what is written to a named pipe made at PATH, as
                    from the console: echo swipe 0 4711 > PATH
  --no-console      leave standard input alone
  --quiet           print no traffic
  --name NAME       put NAME in front of every line
  --help, --version

A first try. In one terminal:

  readersim --link /tmp/reader

and in another, with any serial terminal at 9600 8N1 on /tmp/reader, type V and
Enter: the reader identifies itself. On the console of readersim, "swipe 0 4711"
draws a card, "show 0" shows all there is to know about the reader at address 0,
and "fault 0 cut 3" spoils its next answer.

A reader on a network hears only frames at its own address:

  readersim --network 0-9 --link /tmp/network

)";

std::vector<int> addresses(const std::string& list) {
  std::vector<int> result;
  std::size_t at = 0;
  while (at <= list.size()) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    const std::string range = list.substr(at, end - at);
    const std::size_t dash = range.find('-');
    const int first = number(range.substr(0, dash), 0, highest_address);
    const int last =
        dash == std::string::npos ? first : number(range.substr(dash + 1), first, highest_address);
    for (int address = first; address <= last; ++address) {
      if (std::find(result.begin(), result.end(), address) == result.end()) {
        result.push_back(address);
      }
    }
    at = end + 1;
  }
  return result;
}

Family family(const std::string& name) {
  const std::optional<Family> found = family_named(name);
  if (!found) {
    throw Mistake("no family \"" + name + R"(": Vell, Orin, Orinta, "Ferro Kesh", "Glint Kesh" or Quor)");
  }
  return *found;
}

std::string clock(const std::string& text) {
  if (!Clock{}.set(text, TimePoint{0})) {
    throw Mistake("\"" + text + "\" is no time of the form YYMMDDhhmmssD");
  }
  return text;
}

/// Options without a value. False when the word is none of them.
bool set_switch(Options& options, const std::string& word) {
  if (word == "--help" || word == "-h") {
    options.help = true;
  } else if (word == "--version") {
    options.version = true;
  } else if (word == "--pace") {
    options.line.paced = true;
  } else if (word == "--no-console") {
    options.console = false;
  } else if (word == "--demo") {
    options.demo = true;
  } else if (word == "--quiet") {
    options.quiet = true;
  } else {
    return false;
  }
  return true;
}

void set_value(Options& options, const std::string& word, const std::string& value) {
  if (word == "--family") {
    options.family = family(value);
  } else if (word == "--network") {
    options.network = addresses(value);
  } else if (word == "--link") {
    options.link = value;
  } else if (word == "--baud") {
    options.baud = baud_rate(value);
  } else if (word == "--delay") {
    options.line.answer_delay = std::chrono::milliseconds{number(value, 0, 10000)};
  } else if (word == "--clock") {
    options.clock = clock(value);
  } else if (word == "--seed") {
    options.line.seed = static_cast<std::uint32_t>(number(value, 0, INT32_MAX));
  } else if (word == "--control") {
    options.control = value;
  } else if (word == "--script") {
    options.script = value;
  } else if (word == "--name") {
    options.name = value;
  } else {
    throw Mistake("no option \"" + word + "\"");
  }
}

}  // namespace

Options parse_options(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (set_switch(options, word)) {
      continue;
    }
    if (const std::size_t equals = word.find('='); equals != std::string::npos) {
      set_value(options, word.substr(0, equals), word.substr(equals + 1));
    } else if (i + 1 < arguments.size()) {
      set_value(options, word, arguments[++i]);
    } else {
      throw Mistake("\"" + word + "\" is no option, or its value is missing");
    }
  }
  return options;
}

std::string usage() {
  return std::string{introduction} + Console::help();
}

}  // namespace readersim
