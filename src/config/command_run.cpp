#include "config/command_run.h"

#include <algorithm>

bool send_run(ReaderLink& link, const std::vector<std::string>& commands) {
  return std::all_of(commands.begin(), commands.end(),
                     [&link](const std::string& command) { return link.send_command(command, true); });
}
