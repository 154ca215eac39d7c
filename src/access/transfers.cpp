// What the transfers share, and the clears.

#include "access/transfers.h"

#include "link/deadline.h"
#include "link/messages.h"
#include "link/timings.h"

void Transfers::write_two_acks_on_network() {
  if (link_.network_mode()) {
    link_.write_ack();
    link_.write_ack();
  }
}

/// Waits until so many characters have come. @return false when the deadline comes first.
bool Transfers::await_characters(std::size_t count, const Deadline& deadline) {
  for (;;) {
    const std::size_t waiting = link_.bytes_waiting();
    if (waiting > 0 && waiting < count) {
      // A character that waits would end every yield at once: the rest of a reply is looked for in short
      // naps.
      const Deadline nap{pump_, timings::rest_of_reply_poll};
      pump_.yield(Wake::deadline);
    } else {
      pump_.yield();
    }
    // What has come in time is never lost to a late look at the clock.
    if (link_.bytes_waiting() >= count) {
      return true;
    }
    if (deadline.expired()) {
      return false;
    }
  }
}

bool Transfers::may_clear(const ClearKind& kind) {
  if (kind.first_check == FirstCheck::port && !link_.checkcom()) {
    return false;
  }
  if (busy()) {
    dialogs_.message("Please wait until upload/download complete");
    return false;
  }
  if (kind.first_check == FirstCheck::busy && !link_.checkcom()) {
    return false;
  }
  if (link_.network_mode() && !link_.setnetaddr()) {
    return false;
  }
  if (link_.to_all_readers()) {
    // There is no way to decline, and that is meant.
    dialogs_.message("Warning - you are clearing all readers");
    return true;
  }
  return kind.connection_test == ConnectionTest::none || link_.require_reader();
}

void Transfers::clear(const ClearKind& kind, const StatusLine& status) {
  if (!may_clear(kind)) {
    return;
  }
  write_two_acks_on_network();
  link_.clearcomm();
  const Deadline deadline{pump_, timings::transfer_reply};
  bool done = link_.write_frame(kind.command);
  pump_.sleep(timings::clear_pause);
  // A plain line is not listened to at all, and neither is a network of which no reader answers.
  if (done && link_.network_mode() && !link_.to_all_readers()) {
    done = await_characters(1, deadline);
  }
  if (!done) {
    dialogs_.message(messages::timed_out);
    if (kind.on_time_out == OnTimeOut::message_and_hidden_status) {
      status.hide();
    }
    return;
  }
  if (link_.network_mode()) {
    link_.clearcomm();
    link_.write_ack();
  }
  dialogs_.message(kind.done);
}
