#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

class QKeyEvent;

/// The terminal that keys are typed into, as its keys see it.
class KeyTarget {
 public:
  KeyTarget() = default;
  KeyTarget(const KeyTarget&) = delete;
  KeyTarget& operator=(const KeyTarget&) = delete;
  virtual ~KeyTarget() = default;

  [[nodiscard]] virtual bool port_open() const = 0;
  /// What F10 stands for.
  [[nodiscard]] virtual std::uint8_t address_byte() const = 0;
  /// @return false when the line did not take it.
  virtual bool send(char byte) = 0;
  /// Shows a code ("^B") or a single byte of the terminals' code page at the end of what was typed.
  virtual void show_item(std::string_view item) = 0;
  /// Shows a character as typed text. CR comes here only where Enter begins a line.
  virtual void show_character(char byte) = 0;
  /// An Alt code is about to be shown.
  virtual void before_alt_code() {}
};

/// A key as the keyboard tells it.
struct KeyFacts {
  int key = 0;  ///< Qt::Key; 0 when the character comes from no key
  Qt::KeyboardModifiers modifiers;
  QString text;
  bool repeated = false;  ///< by holding the key down

  [[nodiscard]] static KeyFacts of(const QKeyEvent& event);

 private:
  /// The key that was pressed, by whatever name the platform tells it.
  [[nodiscard]] static int key_of(const QKeyEvent& event);
};

/// The keys of both terminals: control characters, F9, F10 and the Alt code, a byte's number typed on the
/// keypad while Alt is held. It knows no window; each terminal shows in its own way.
class TerminalKeys {
 public:
  enum class CaretKeys {
    tab_and_enter,  ///< Tab moves the focus, Enter begins a line: the terminal screen
    none,           ///< both are typed control characters: the full-screen terminal
  };
  /// Whether the platform delivers an Alt code once more, as a character without a key.
  enum class AfterAltCode { nothing, character };
  static const AfterAltCode platform_after_alt_code;

  TerminalKeys(KeyTarget& target, CaretKeys caret_keys,
               AfterAltCode after_alt_code = platform_after_alt_code);

  /// @return whether the terminal took the key. What it did not take moves the caret or the focus.
  bool key_down(const KeyFacts& facts);
  bool key_up(const KeyFacts& facts);
  /// Characters that no key brought: pasted, composed, or put in by an assistive client. One without a
  /// code, and all of them while the port is closed, send nothing and show nothing.
  /// @return false when the line took no more; the rest is then left out.
  bool characters(const QString& text);

  /// An Alt code that was begun is forgotten and sends nothing: its end may go elsewhere.
  void focus_lost();
  /// Ctrl counts on while the keyboard says that it is held: it may have been let go elsewhere.
  void focus_gained(Qt::KeyboardModifiers held);
  /// As if no key had been pressed yet.
  void reset();

 private:
  bool character_key(const KeyFacts& facts);
  bool control_key(const KeyFacts& facts);
  void alt_released();
  bool show_and_send(std::string_view item, char byte);
  bool type(char byte);

  KeyTarget& target_;
  CaretKeys caret_keys_;
  AfterAltCode after_alt_code_;
  bool alt_held_ = false;
  std::string alt_code_;  ///< its digits so far
  bool ctrl_held_ = false;
  bool swallow_next_ = false;
};
