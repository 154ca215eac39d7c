#pragma once

#include "link/click.h"
#include "link/qt_event_pump.h"
#include "link/qt_serial_port.h"
#include "link/reader_link.h"
#include "support/bytes.h"
#include "support/pty.h"
#include "support/scripted_dialogs.h"

#include <chrono>
#include <functional>

/// The real link: the real port on a pseudo-terminal as Com Port 1, the real event loop. Opened as at
/// start-up.
struct PtyBench {
  Pty line;
  ScopedVariable port_1{"TARVOS_COM1", line.device()};
  QtSerialPort port;
  QtEventPump pump{port};
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
  ClickRunner clicks{pump, dialogs};

  PtyBench() { link.open_at_start_up(); }

  void use_network(std::string_view address) {
    settings.network_mode = true;
    settings.reader_address = address;
  }
};

/// Turns the event loop until `condition` holds. @return whether it did within `time`.
bool wait_until(const std::function<bool()>& condition,
                std::chrono::milliseconds time = std::chrono::milliseconds(2000));

/// How long `action` takes.
std::chrono::milliseconds time_of(const std::function<void()>& action);
