#include "config/identification.h"

#include "link/timings.h"

namespace {

constexpr int longest_identification = 55;
constexpr std::size_t shortest_shown = 3;
constexpr std::string_view cannot_read_from_127 = "Cannot read from unit 127";

}  // namespace

std::optional<std::string> read_identification(ReaderLink& link, Dialogs& dialogs) {
  if (!link.checkcom() || !link.setnetaddr()) {
    return std::nullopt;
  }
  if (link.to_all_readers()) {
    dialogs.message(cannot_read_from_127);
    return std::nullopt;
  }
  if (!link.require_reader()) {
    return std::nullopt;
  }
  link.discard_then_clear();
  link.write_frame("V");
  std::string& reply = link.last_response();
  const bool complete =
      link.getinput(reply, longest_identification, timings::identification_reply, true, false);
  if (!complete && reply.size() < shortest_shown) {
    link.commerror();
    return std::nullopt;
  }
  const std::string identification = reply;
  if (link.network_mode()) {
    link.write_ack();  // beside the one of getinput: the doubled acknowledge is meant
  }
  link.clear_then_discard();
  return identification;
}
