#include "config/reader_setup.h"

#include "link/messages.h"
#include "link/timings.h"

namespace {

constexpr std::string_view deletion_warning =
    "This will delete all data in the reader\rDo you wish to continue?";

}  // namespace

void ReaderSetup::run(const SetupKind& kind, const SetupSteps& steps) {
  if (!link_.checkcom() || !link_.setnetaddr()) {
    return;
  }
  if (steps.check) {
    steps.check();
  }
  if (kind.warning == SetupWarning::deletes_all_data) {
    dialogs_.message(deletion_warning);
  }
  if (kind.presence == Presence::asked && !link_.to_all_readers() && !link_.require_reader()) {
    return;
  }
  const std::vector<std::string> payloads = steps.payloads();
  for (std::size_t index = 0; index < payloads.size(); ++index) {
    if (!send(kind, payloads.at(index), index + 1 == payloads.size())) {
      dialogs_.message(messages::error_communicating);
      return;
    }
  }
  flush(kind.at_end);
  dialogs_.message(steps.done());
}

/// @return false when the line takes no bytes, or the one reader addressed does not acknowledge.
bool ReaderSetup::send(const SetupKind& kind, std::string_view payload, bool last) {
  flush(kind.before_each_frame);
  if (!link_.write_frame(payload)) {
    return false;
  }
  if (link_.network_mode() && !link_.to_all_readers()) {
    return link_.getack();
  }
  if (kind.pause == SetupPause::after_each_frame || (kind.pause == SetupPause::between_frames && !last)) {
    pump_.sleep(timings::setup_pause);
  }
  return true;
}

void ReaderSetup::flush(LineFlush order) {
  if (order == LineFlush::clear_then_discard) {
    link_.clear_then_discard();
  } else if (order == LineFlush::discard_then_clear) {
    link_.discard_then_clear();
  }
}
