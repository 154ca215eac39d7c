#pragma once

#include <QtGlobal>

class QKeyEvent;

/// Finds the presses that come from a key held down where the toolkit does not mark them. X11 tells a key
/// held down as a release and a press of one moment; the toolkit, looking at the release, knows it for what
/// it is only when the press has already arrived with it.
class KeyRepeat {
 public:
  /// To be asked about every press and release, in their order.
  /// @return true for a press that is a repetition and is not marked as one
  [[nodiscard]] bool unmarked(const QKeyEvent& event);

 private:
  int released_key_ = 0;
  quint64 released_at_ = 0;  ///< milliseconds; 0: never, or not known
};
