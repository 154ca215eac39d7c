#pragma once

#include "simulator/reader.h"

#include <string>
#include <string_view>

namespace readersim {

/// What a reader makes of one command.
struct Verdict {
  enum class Kind {
    refused,  ///< not for this family, or malformed: no answer of any kind
    done,     ///< obeyed: an acknowledge on the network, nothing on a plain line
    data,     ///< obeyed, with a data reply
    poll,     ///< the reply to a poll
  };
  Kind kind = Kind::refused;
  std::string data;     ///< for Kind::data and Kind::poll
  char poll_state = 0;  ///< for Kind::poll: SOH a record, EOT no more records, STX nothing new
  std::string meaning;  ///< for people: what the command was and what came of it
};

/// Gives the reader one command, without its frame, and lets it act on it.
[[nodiscard]] Verdict obey(Reader& reader, std::string_view command, TimePoint now);
/// What came of a card drawn through a reader.
struct Swipe {
  bool accepted = false;
  std::string unsolicited;  ///< what a reader on a plain line sends at once, its end character included
  std::string meaning;      ///< for people
};
[[nodiscard]] Swipe swipe(Reader& reader, std::string_view card, TimePoint now);

}  // namespace readersim
