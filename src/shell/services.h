#pragma once

#include "link/click.h"
#include "link/comm_settings.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_link.h"
#include "link/serial_port.h"
#include "tools/terminal_receiver.h"

#include <string>

/// The operations that must end before the screen changes. Set and cleared by the transfers and the poller.
struct BusyFlags {
  bool polling_on = false;
  bool downloading_on = false;
  bool uploading_on = false;
};

/// What every screen and operation works with: one of each, owned by the program.
struct Services {
  SerialPort& port;
  EventPump& pump;
  Dialogs& dialogs;
  CommSettings& settings;
  ReaderLink& link;
  ClickRunner& clicks;
  TerminalReceiver& receiver;
  BusyFlags& busy;
  /// The text of the "Record Length" box, kept current as it is typed; the access list download reads it.
  std::string& record_length;
};
