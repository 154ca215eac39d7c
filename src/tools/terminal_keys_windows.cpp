#include "tools/terminal_keys.h"

/// The system composes the character itself when Alt is released, and types it.
const TerminalKeys::AfterAltCode TerminalKeys::platform_after_alt_code = AfterAltCode::character;
