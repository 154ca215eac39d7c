#include "tools/terminal_keys.h"

#include "link/frame.h"
#include "shell/code_page.h"
#include "tools/caret_code.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace {

constexpr char backspace = '\x08';
constexpr char tab = '\x09';
constexpr char escape = '\x1B';
constexpr int control_mask = 0x1F;

/// A key of the keypad: with Num Lock on it is a digit, with Num Lock off it moves the caret. The caret's
/// own keys have the same codes and count as digits too.
struct KeypadKey {
  char digit;
  Qt::Key without_num_lock;
};

constexpr std::array keypad{
    KeypadKey{'0', Qt::Key_Insert},   KeypadKey{'1', Qt::Key_End},  KeypadKey{'2', Qt::Key_Down},
    KeypadKey{'3', Qt::Key_PageDown}, KeypadKey{'4', Qt::Key_Left}, KeypadKey{'5', Qt::Key_Clear},
    KeypadKey{'6', Qt::Key_Right},    KeypadKey{'7', Qt::Key_Home}, KeypadKey{'8', Qt::Key_Up},
    KeypadKey{'9', Qt::Key_PageUp},
};

std::optional<char> keypad_digit(const KeyFacts& facts) {
  if (facts.modifiers.testFlag(Qt::KeypadModifier) && facts.key >= Qt::Key_0 && facts.key <= Qt::Key_9) {
    return static_cast<char>(facts.key);
  }
  const auto* const place = std::find_if(keypad.begin(), keypad.end(), [&facts](const KeypadKey& key) {
    return key.without_num_lock == facts.key;
  });
  return place == keypad.end() ? std::nullopt : std::optional(place->digit);
}

/// Ctrl, and not the Ctrl that is half of AltGr.
bool with_ctrl(const KeyFacts& facts) {
  return facts.modifiers.testFlag(Qt::ControlModifier) && !facts.modifiers.testFlag(Qt::AltModifier);
}

/// Alt, and not AltGr, which is a key of its own or comes as Ctrl and then Alt.
bool is_alt(const KeyFacts& facts) {
  return facts.key == Qt::Key_Alt && !facts.modifiers.testFlag(Qt::ControlModifier);
}

/// Keys whose character does not depend on Ctrl.
std::optional<char> fixed_character(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return wire::cr;
    case Qt::Key_Escape:
      return escape;
    case Qt::Key_Backspace:
      return backspace;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return tab;
    default:
      return std::nullopt;
  }
}

/// What Ctrl makes of a key.
std::optional<char> control_character(int key) {
  const bool has_code =
      (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_BracketLeft && key <= Qt::Key_Underscore);
  if (has_code) {
    return static_cast<char>(key & control_mask);
  }
  return key == Qt::Key_Space ? std::optional(' ') : std::nullopt;
}

/// The byte that the digits of an Alt code stand for; no digits are 0, and what is too big stands for none.
std::optional<char> byte_of_alt_code(const std::string& digits) {
  unsigned char value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return result.ec == std::errc::result_out_of_range ? std::nullopt : std::optional(static_cast<char>(value));
}

}  // namespace

KeyFacts KeyFacts::of(const QKeyEvent& event) {
  return {key_of(event), event.modifiers(), event.text(), event.isAutoRepeat()};
}

TerminalKeys::TerminalKeys(KeyTarget& target, CaretKeys caret_keys, AfterAltCode after_alt_code)
    : target_(target), caret_keys_(caret_keys), after_alt_code_(after_alt_code) {}

bool TerminalKeys::key_down(const KeyFacts& facts) {
  if (is_alt(facts)) {
    if (!facts.repeated) {
      alt_held_ = true;
      alt_code_.clear();
    }
    return true;
  }
  if (alt_held_) {
    if (const std::optional<char> digit = keypad_digit(facts)) {
      alt_code_ += *digit;
    }
    return true;
  }
  if (caret_keys_ == CaretKeys::tab_and_enter && fixed_character(facts.key) == tab) {
    return false;
  }
  const bool after_alt_code = swallow_next_;
  swallow_next_ = false;
  if ((after_alt_code && facts.key == 0) || !target_.port_open()) {
    return true;
  }
  return control_key(facts) || character_key(facts);
}

/// Ctrl itself, Ctrl-2, F9 and F10.
bool TerminalKeys::control_key(const KeyFacts& facts) {
  const bool ctrl = (ctrl_held_ && !facts.modifiers.testFlag(Qt::AltModifier)) || with_ctrl(facts);
  const bool digit_two =
      (facts.key == Qt::Key_2 || facts.key == Qt::Key_At) && !facts.modifiers.testFlag(Qt::KeypadModifier);
  if (facts.key == Qt::Key_Control) {
    ctrl_held_ = true;
    return true;
  }
  if ((ctrl && digit_two) || facts.key == Qt::Key_F9) {
    show_and_send("^@", wire::nul);
    return true;
  }
  if (facts.key == Qt::Key_F10) {
    const auto byte = static_cast<char>(target_.address_byte());
    show_and_send(std::string_view(&byte, 1), byte);
    return true;
  }
  return false;
}

bool TerminalKeys::character_key(const KeyFacts& facts) {
  if (const std::optional<char> byte = fixed_character(facts.key)) {
    type(*byte);
    return true;
  }
  if (with_ctrl(facts)) {
    const std::optional<char> byte = control_character(facts.key);
    if (byte) {
      type(*byte);
    }
    return byte.has_value();
  }
  // Delete brings a text, but types nothing.
  if (facts.text.isEmpty() || facts.key == Qt::Key_Delete || facts.modifiers.testFlag(Qt::MetaModifier)) {
    return false;
  }
  characters(facts.text);
  return true;
}

bool TerminalKeys::key_up(const KeyFacts& facts) {
  if (facts.repeated) {
    return true;
  }
  if (facts.key == Qt::Key_Control) {
    ctrl_held_ = false;
  } else if (facts.key == Qt::Key_Alt && alt_held_) {
    alt_released();
    return true;
  }
  return false;
}

void TerminalKeys::alt_released() {
  alt_held_ = false;
  // Only a code that has digits is composed by the platform too.
  swallow_next_ = after_alt_code_ == AfterAltCode::character && !alt_code_.empty();
  const std::optional<char> byte = byte_of_alt_code(alt_code_);
  if (byte) {
    target_.before_alt_code();
  }
  if (byte && target_.port_open()) {
    show_and_send(std::string_view(&*byte, 1), *byte);
  }
}

bool TerminalKeys::characters(const QString& text) {
  for (const QChar character : text) {
    const std::optional<char> byte = code_page::to_windows_1252(character);
    if (!target_.port_open() || (byte && !type(*byte))) {
      return false;
    }
  }
  return true;
}

/// Control characters are shown as codes, 64 above themselves; not as received ones are: that is meant.
bool TerminalKeys::type(char byte) {
  const bool begins_a_line = byte == wire::cr && caret_keys_ == CaretKeys::tab_and_enter;
  if (is_control(byte) && !begins_a_line) {
    return show_and_send(caret_code(byte), byte);
  }
  if (!target_.send(byte)) {
    return false;  // the box shows what has gone out
  }
  target_.show_character(byte);
  return true;
}

bool TerminalKeys::show_and_send(std::string_view item, char byte) {
  target_.show_item(item);
  return target_.send(byte);
}

void TerminalKeys::focus_lost() {
  alt_held_ = false;
}

void TerminalKeys::focus_gained(Qt::KeyboardModifiers held) {
  ctrl_held_ = ctrl_held_ && held.testFlag(Qt::ControlModifier);
}

void TerminalKeys::reset() {
  alt_held_ = ctrl_held_ = swallow_next_ = false;
}
