#pragma once

#include "link/click.h"
#include "link/reader_link.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_pump.h"

/// The link on a fake port at virtual time, opened as at start-up: what every operation's test stands on.
struct LinkBench {
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
  ClickRunner clicks{pump, dialogs};

  LinkBench() { link.open_at_start_up(); }

  void use_network(std::string_view address) {
    settings.network_mode = true;
    settings.reader_address = address;
  }
};
