#pragma once

// What tells the buttons of the Orin and the Kesh setup apart in how they send. The differences look like
// slips and are meant: readers out there count on them.

/// The box before anything is sent. It has no way to decline, and that is meant.
enum class SetupWarning { none, deletes_all_data };

/// Whether one reader is asked if it is there. All readers at once never are.
enum class Presence { not_asked, asked };

/// In which order waiting characters are read out and the receive buffer is thrown away.
enum class LineFlush { none, clear_then_discard, discard_then_clear };

/// Where no acknowledge is awaited: on a plain line, and of all readers at once.
enum class SetupPause { none, between_frames, after_each_frame };

struct SetupKind {
  SetupWarning warning;
  Presence presence;
  LineFlush before_each_frame;
  SetupPause pause;
  LineFlush at_end;  ///< after the last frame, before the success message
};

inline constexpr SetupKind orin_general{
    .warning = SetupWarning::deletes_all_data,
    .presence = Presence::asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::between_frames,  // none after the last
    .at_end = LineFlush::none,
};

inline constexpr SetupKind orin_logging{
    .warning = SetupWarning::none,
    .presence = Presence::not_asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::none,
    .at_end = LineFlush::clear_then_discard,
};

inline constexpr SetupKind orin_mode{
    .warning = SetupWarning::none,
    .presence = Presence::asked,
    .before_each_frame = LineFlush::discard_then_clear,
    .pause = SetupPause::none,
    .at_end = LineFlush::discard_then_clear,
};

inline constexpr SetupKind ferro_kesh_general{
    .warning = SetupWarning::deletes_all_data,
    .presence = Presence::asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::after_each_frame,
    .at_end = LineFlush::none,
};

inline constexpr SetupKind glint_kesh_general{
    .warning = SetupWarning::deletes_all_data,
    .presence = Presence::asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::after_each_frame,
    .at_end = LineFlush::clear_then_discard,
};

inline constexpr SetupKind kesh_switch{
    .warning = SetupWarning::none,
    .presence = Presence::not_asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::after_each_frame,
    .at_end = LineFlush::clear_then_discard,
};

inline constexpr SetupKind kesh_identifiers{
    .warning = SetupWarning::none,
    .presence = Presence::not_asked,
    .before_each_frame = LineFlush::clear_then_discard,
    .pause = SetupPause::after_each_frame,
    .at_end = LineFlush::none,
};
