#include "tools/terminal_keys.h"

/// No character follows: the next one typed is the technician's own.
const TerminalKeys::AfterAltCode TerminalKeys::platform_after_alt_code = AfterAltCode::nothing;
