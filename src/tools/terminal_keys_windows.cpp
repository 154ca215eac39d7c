#include "tools/terminal_keys.h"

#include <QKeyEvent>

/// The system composes the character itself when Alt is released, and types it.
const TerminalKeys::AfterAltCode TerminalKeys::platform_after_alt_code = AfterAltCode::character;

int KeyFacts::key_of(const QKeyEvent& event) {
  return event.key();
}
