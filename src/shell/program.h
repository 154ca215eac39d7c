#pragma once

#include "access/transfers.h"
#include "shell/services.h"
#include "tools/terminal_printer.h"
#include "tools/terminal_receiver.h"

#include <functional>
#include <string>

/// The state of one run and the services made of it, over a given port, event pump, dialogs and printer.
class Program {
 public:
  Program(SerialPort& port, EventPump& pump, Dialogs& dialogs, Printer& printer)
      : link_(port, pump, dialogs, settings_),
        clicks_(pump, dialogs),
        receiver_(port, pump),
        transfers_(link_, pump, dialogs, busy_),
        clock_(link_, pump, dialogs),
        services_{port,      pump,  dialogs,        printer,    settings_, link_,     clicks_,
                  receiver_, busy_, record_length_, transfers_, clock_,    checkline_} {}

  [[nodiscard]] Services& services() { return services_; }

 private:
  CommSettings settings_;
  BusyFlags busy_;
  std::string record_length_;
  ReaderLink link_;
  ClickRunner clicks_;
  TerminalReceiver receiver_;
  Transfers transfers_;
  ReaderClock clock_;
  std::function<void()> checkline_ = [] {};  // until there is a display
  Services services_;
};
