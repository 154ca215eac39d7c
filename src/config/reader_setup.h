#pragma once

#include "config/setup_kinds.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_link.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What a button gives to the setup of its kind. Each is called when its turn comes, so that a choice made
/// during a wait still counts.
struct SetupSteps {
  /// Reads and checks what was typed, once port and address are known. It throws ClickError to refuse.
  std::function<void()> check;
  std::function<std::vector<std::string>()> payloads;
  /// The text of the box after success.
  std::function<std::string_view()> done;
};

/// Sends settings that one network reader acknowledges, frame by frame. Frames already sent stay in effect
/// when a later one fails. Shows the boxes of the link, "Error communicating with reader" without an
/// acknowledge, or the success message.
class ReaderSetup {
 public:
  ReaderSetup(ReaderLink& link, EventPump& pump, Dialogs& dialogs)
      : link_(link), pump_(pump), dialogs_(dialogs) {}

  void run(const SetupKind& kind, const SetupSteps& steps);

 private:
  [[nodiscard]] bool send(const SetupKind& kind, std::string_view payload, bool last);
  void flush(LineFlush order);

  ReaderLink& link_;
  EventPump& pump_;
  Dialogs& dialogs_;
};
