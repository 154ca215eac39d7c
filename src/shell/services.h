#pragma once

#include "link/busy_flags.h"
#include "link/click.h"
#include "link/comm_settings.h"
#include "link/dialogs.h"
#include "link/event_pump.h"
#include "link/reader_clock.h"
#include "link/reader_link.h"
#include "link/serial_port.h"

#include <functional>
#include <string>

class Printer;
class TerminalReceiver;
class Transfers;

/// What every screen and operation works with: one of each, owned by the program.
struct Services {
  SerialPort& port;
  EventPump& pump;
  Dialogs& dialogs;
  Printer& printer;
  CommSettings& settings;
  ReaderLink& link;
  ClickRunner& clicks;
  TerminalReceiver& receiver;
  BusyFlags& busy;
  /// The text of the "Record Length" box, kept current as it is typed; the access list download reads it.
  std::string& record_length;
  Transfers& transfers;
  ReaderClock& clock;
  /// Clears the display of the protocol test when it is full. The terminal's Alt code runs it too.
  std::function<void()>& checkline;
};
