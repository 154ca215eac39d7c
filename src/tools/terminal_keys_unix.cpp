#include "tools/terminal_keys.h"

#include <QKeyEvent>

/// No character follows: the next one typed is the technician's own.
const TerminalKeys::AfterAltCode TerminalKeys::platform_after_alt_code = AfterAltCode::nothing;

/// X11 calls the Alt key Meta while Shift is held. It is the same key: Alt that was let go under Shift would
/// otherwise be held for ever.
int KeyFacts::key_of(const QKeyEvent& event) {
  constexpr quint32 meta_l = 0xFFE7;
  constexpr quint32 meta_r = 0xFFE8;
  const quint32 symbol = event.nativeVirtualKey();
  const bool is_alt = event.key() == Qt::Key_Meta && (symbol == meta_l || symbol == meta_r);
  return is_alt ? static_cast<int>(Qt::Key_Alt) : event.key();
}
