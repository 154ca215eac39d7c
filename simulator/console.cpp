#include "simulator/console.h"

#include "simulator/fabricate.h"
#include "simulator/report.h"
#include "simulator/trace.h"
#include "simulator/wire.h"
#include "simulator/words.h"

#include <algorithm>
#include <climits>

namespace readersim {

struct Console::Entry {
  std::string_view name;
  std::size_t words;  ///< how many words it needs at least, its own included
  std::string (Console::*act)(const Words&, TimePoint);
  std::string_view usage;
};

const std::vector<Console::Entry>& Console::entries() {
  static const std::vector<Entry> table{
      {"show", 1, &Console::show, "show [A]               one line about each reader, or all about reader A"},
      {"swipe", 3, &Console::swipe, "swipe A TEXT           draw a card with that text (\\x41 is a byte)"},
      {"set", 4, &Console::set, "set A NAME VALUE       change what 'show A' shows: 'set 5 baud 1200'"},
      {"fault", 2, &Console::fault,
       "fault A KIND [K]       spoil the next K answers of reader A, or 'always';\n"
       "                         'fault A clear' ends it"},
      {"faults", 1, &Console::faults, "faults                 the faults that are still to come"},
      {"present", 1, &Console::present, "present [A on|off]     plug a reader in or out of the network"},
      {"answer", 3, &Console::answer,
       "answer A LETTER [K]    answer the next K download commands with that letter"},
      {"grant", 4, &Console::grant, "grant A SCHEDULE ID    put an entry into the access list"},
      {"enrol", 3, &Console::enrol, "enrol A N              put N made-up entries into the access list"},
      {"list", 2, &Console::list, "list A                 the access list"},
      {"schedule", 3, &Console::schedule, "schedule A N           schedule N of an access reader"},
      {"log", 2, &Console::log, "log A                  the access log or the collected records"},
      {"fill", 3, &Console::fill,
       "fill A N [LENGTH]      put N made-up records of up to LENGTH characters there"},
      {"power", 2, &Console::power, "power A                switch the reader off and on"},
      {"note", 2, &Console::note, "note TEXT              write a line among the traffic"},
      {"hangup", 1, &Console::hang_up, "hangup                 unplug the adapter: the line goes dead"},
      {"replug", 1, &Console::replug, "replug                 plug it in again"},
      {"quit", 1, &Console::quit, "quit                   end the simulation"},
  };
  return table;
}

Console::Console(Line& line, std::uint32_t seed, Hooks hooks)
    : line_(line), random_(seed), hooks_(std::move(hooks)) {}

std::string Console::help() {
  std::string text = "Commands (A is a reader's address, or all):\n";
  for (const Entry& entry : entries()) {
    text.append("  ").append(entry.usage).append("\n");
  }
  text += "  help                   this list\nFaults, N counts the bytes of an answer from 1:\n";
  for (const FaultTraits& each : all_faults()) {
    text.append("  ").append(each.usage).append("\n");
  }
  return text;
}

std::string Console::obey(std::string_view line, TimePoint now) {
  const Words words = split(line);
  if (words.empty()) {
    return {};
  }
  if (words[0] == "help" || words[0] == "?") {
    return help();
  }
  const auto entry = std::find_if(entries().begin(), entries().end(),
                                  [&](const Entry& each) { return each.name == words[0]; });
  if (entry == entries().end()) {
    return "? no command \"" + words[0] + "\", try help\n";
  }
  if (words.size() < entry->words) {
    return "? usage: " + std::string{entry->usage} + "\n";
  }
  try {
    return (this->*entry->act)(words, now);
  } catch (const Mistake& mistake) {
    return "? " + std::string{mistake.what()} + "\n";
  }
}

std::vector<Seat*> Console::seats(const Words& words) const {
  std::vector<Seat*> found;
  const int address = words[1] == "all" ? -1 : number(words[1], 0, highest_address);
  for (const auto& seat : line_.seats()) {
    if (address < 0 || seat->reader.address == address) {
      found.push_back(seat.get());
    }
  }
  if (found.empty()) {
    throw Mistake("no reader has address " + words[1]);
  }
  return found;
}

std::string Console::show(const Words& words, TimePoint now) {
  std::string text;
  if (words.size() == 1) {
    for (const auto& seat : line_.seats()) {
      text += summary(*seat, now) + "\n";
    }
    return text;
  }
  for (const Seat* seat : seats(words)) {
    text += report(*seat, now);
  }
  return text;
}

std::string Console::swipe(const Words& words, TimePoint now) {
  std::string text;
  for (Seat* seat : seats(words)) {
    text += line_.swipe(*seat, unescape(join(words, 2)), now).meaning + "\n";
  }
  return text;
}

std::string Console::fault(const Words& words, TimePoint) {
  if (words[1] == "clear" || (words.size() == 3 && words[2] == "clear")) {
    for (Seat* seat : words[1] == "clear" ? seats({"", "all"}) : seats(words)) {
      seat->faults.clear();
    }
    return {};
  }
  const std::vector<Seat*> readers = seats(words);
  const auto kind = std::find_if(all_faults().begin(), all_faults().end(), [&](const FaultTraits& each) {
    return words.size() > 2 && each.name == words[2];
  });
  if (kind == all_faults().end()) {
    throw Mistake("no such fault, try help");
  }
  const auto count_at = 3 + static_cast<std::size_t>(kind->numbers);
  if (words.size() < count_at || words.size() > count_at + 1) {
    throw Mistake("usage: fault A " + std::string{kind->usage});
  }
  Fault fault{kind->kind};
  fault.n = kind->numbers > 0 ? number(words[3], 0, 1000000) : 0;
  fault.amount = kind->numbers > 1 ? number(words[4], 0, 1000000) : 0;
  if (words.size() > count_at) {
    fault.times = words[count_at] == "always" ? -1 : number(words[count_at], 1, INT_MAX);
  }
  for (Seat* seat : readers) {
    seat->faults.push_back(fault);
  }
  return {};
}

std::string Console::faults(const Words&, TimePoint) {
  std::string text;
  for (const auto& seat : line_.seats()) {
    for (const Fault& fault : seat->faults) {
      text += std::to_string(seat->reader.address) + ": " + readersim::describe(fault) + "\n";
    }
  }
  return text.empty() ? "no faults\n" : text;
}

std::string Console::present(const Words& words, TimePoint now) {
  std::string text;
  if (words.size() < 3) {
    for (const auto& seat : line_.seats()) {
      text += std::to_string(seat->reader.address) + (seat->present ? ": on\n" : ": off\n");
    }
    return text;
  }
  for (Seat* seat : seats(words)) {
    seat->present = on_or_off(words[2]);
    line_.note(seat->present ? "plugged in" : "unplugged", now, seat->reader.address);
  }
  return text;
}

std::string Console::answer(const Words& words, TimePoint) {
  for (Seat* seat : seats(words)) {
    seat->reader.verdict_letter = words[2].front();
    seat->reader.verdict_times = 1;
    if (words.size() > 3) {
      seat->reader.verdict_times = words[3] == "always" ? -1 : number(words[3], 0, INT_MAX);
    }
  }
  return {};
}

std::string Console::power(const Words& words, TimePoint now) {
  for (Seat* seat : seats(words)) {
    reset(seat->reader);
    line_.note("switched off and on", now, seat->reader.address);
  }
  return {};
}

std::string Console::note(const Words& words, TimePoint now) {
  line_.note(join(words, 1), now);
  return {};
}

std::string Console::hang_up(const Words&, TimePoint now) {
  line_.hang_up(now);
  return {};
}

std::string Console::replug(const Words&, TimePoint now) {
  line_.replug(now);
  return {};
}

std::string Console::quit(const Words&, TimePoint) {
  if (hooks_.quit) {
    hooks_.quit();
  }
  return {};
}

}  // namespace readersim
