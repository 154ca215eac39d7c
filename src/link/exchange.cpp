// The exchange of the link: one command and its acknowledge, one request and its reply.

#include "link/frame.h"
#include "link/messages.h"
#include "link/reader_link.h"
#include "link/timings.h"

namespace {

constexpr std::size_t shortest_identification = 10;
constexpr int longest_presence_reply = 100;

}  // namespace

bool ReaderLink::send_command(std::string_view command, bool wait_for_acknowledge) {
  command_accepted_ = false;
  if (!setnetaddr() || !checkcom()) {
    return false;
  }
  discard_then_clear();
  bool accepted = write_frame(command);
  // A plain line never acknowledges a command.
  if (accepted && wait_for_acknowledge && network_mode_) {
    pump_.sleep(timings::acknowledge_pause);
    accepted = port_.read_char() == wire::ack;
  }
  command_accepted_ = accepted;
  if (!accepted) {
    dialogs_.message(messages::no_acknowledge);
  }
  clear_then_discard();
  return accepted;
}

bool ReaderLink::getack() {
  for (int poll = 0; poll < timings::acknowledge_polls; ++poll) {
    pump_.yield();
    if (port_.bytes_waiting() >= 1 && port_.read_char() == wire::ack) {
      return true;
    }
  }
  return false;
}

bool ReaderLink::getinput(std::string& response, int maximum_length, std::chrono::milliseconds time_out,
                          bool send_ack, bool doubled_terminator) {
  response.clear();
  Deadline deadline{pump_, time_out};
  return network_mode_
             ? collect_network_reply(response, maximum_length, deadline, send_ack, doubled_terminator)
             : collect_plain_reply(response, maximum_length, deadline, doubled_terminator);
}

bool ReaderLink::collect_network_reply(std::string& response, int maximum_length, Deadline& deadline,
                                       bool send_ack, bool doubled_terminator) {
  if (await_char(deadline) != wire::ack) {
    return false;
  }
  // Counted apart from the text: another exchange, clicked during a wait, may refill the same text.
  int count = 0;
  bool complete = false;
  while (!complete) {
    const std::optional<char> character = await_char(deadline);
    if (!character) {
      return false;
    }
    if (*character == wire::etx) {
      response += wire::etx;
      if (doubled_terminator && char_after_terminator() == wire::etx) {
        response += wire::etx;
      }
      complete = true;
    } else {
      response += *character;
      complete = ++count == maximum_length;
    }
  }
  // The lead-in character and the end character go, whatever they are: a reply that was cut at the
  // maximum length loses two characters of its data here, and that is meant.
  response = response.size() > 2 ? response.substr(1, response.size() - 2) : std::string{};
  if (send_ack) {
    write_ack();
  }
  return true;
}

bool ReaderLink::collect_plain_reply(std::string& response, int maximum_length, Deadline& deadline,
                                     bool doubled_terminator) {
  int count = 0;
  while (count != maximum_length) {
    const std::optional<char> character = await_char(deadline);
    if (!character) {
      return false;
    }
    if (*character == wire::cr) {
      if (doubled_terminator && char_after_terminator() == wire::cr) {
        response += wire::cr;
      }
      return true;
    }
    response += *character;
    ++count;
  }
  return true;
}

std::optional<char> ReaderLink::await_char(Deadline& deadline) {
  deadline.restart();
  for (;;) {
    pump_.yield();
    // The waiting byte comes before the time-out: one that arrived in time is never lost to a late look.
    if (port_.bytes_waiting() >= 1) {
      return port_.read_char();
    }
    if (deadline.expired()) {
      return std::nullopt;
    }
  }
}

/// The character that follows an end character within the fixed pause, if any; it is taken off the line.
std::optional<char> ReaderLink::char_after_terminator() {
  pump_.sleep(timings::doubled_terminator_pause);
  return port_.read_char();
}

bool ReaderLink::reader_connected() {
  if (!setnetaddr()) {
    return false;
  }
  discard_then_clear();
  write_frame("V");
  const bool answered =
      getinput(last_response_, longest_presence_reply, timings::presence_reply, true, false);
  const bool connected = answered && last_response_.size() >= shortest_identification;
  clear_then_discard();
  return connected;
}

bool ReaderLink::require_reader() {
  const bool connected = reader_connected();
  if (!connected) {
    notconnected();
  }
  return connected;
}
