#include "tools/terminal_keys.h"

#include "support/bytes.h"

#include <vector>

namespace {

/// A terminal that writes down what its keys ask for.
class RecordingTarget : public KeyTarget {
 public:
  bool open = true;
  std::string sent;
  std::string items;  ///< what was appended
  std::string typed;  ///< what was shown where the caret stands

  [[nodiscard]] bool port_open() const override { return open; }
  [[nodiscard]] std::uint8_t address_byte() const override { return 0x85; }
  bool takes_bytes = true;

  bool send(char byte) override {
    sent += byte;
    return takes_bytes;
  }
  void show_item(std::string_view item) override { items += item; }
  void show_character(char byte) override { typed += byte; }
};

struct Keyboard {
  using CaretKeys = TerminalKeys::CaretKeys;
  using AfterAltCode = TerminalKeys::AfterAltCode;

  RecordingTarget terminal;
  TerminalKeys keys;

  explicit Keyboard(CaretKeys caret_keys = CaretKeys::tab_and_enter,
                    AfterAltCode after_alt_code = AfterAltCode::nothing)
      : keys(terminal, caret_keys, after_alt_code) {}

  bool down(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    return keys.key_down({key, modifiers, text, false});
  }
  void type(int key, QChar character) { down(key, {}, QString(character)); }
  void up(int key) { keys.key_up({key, {}, {}, false}); }
  void alt_code(const std::vector<int>& keypad_keys) {
    down(Qt::Key_Alt);
    for (const int key : keypad_keys) {
      down(key, Qt::AltModifier | Qt::KeypadModifier);
    }
    up(Qt::Key_Alt);
  }
};

struct KeyRow {
  const char* name;
  int key;
  Qt::KeyboardModifiers modifiers;
  std::u16string_view text;
  std::string_view sent;
  std::string_view item;
  std::string_view typed;
  bool taken = true;
};

void PrintTo(const KeyRow& row, std::ostream* out) {
  *out << row.name;
}

using namespace std::string_view_literals;

const Qt::KeyboardModifiers none;
const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
const Qt::KeyboardModifiers alt_gr_as_ctrl_alt = Qt::ControlModifier | Qt::AltModifier;

/// The keys that both terminals treat alike.
const KeyRow common_rows[] = {
    {"letter", Qt::Key_A, shift, u"A", "A", "", "A"},
    {"blank", Qt::Key_Space, none, u" ", " ", "", " "},
    {"blank_with_ctrl", Qt::Key_Space, ctrl, u" ", " ", "", " "},
    {"letter_of_windows_1252", Qt::Key_Eacute, none, u"\u00E9", "\xE9", "", "\xE9"},
    {"euro_sign", Qt::Key_E, Qt::GroupSwitchModifier, u"\u20AC", "\x80", "", "\x80"},
    {"character_outside_the_code_page", Qt::Key_A, none, u"\u0416", "", "", ""},
    {"half_outside_the_code_page", Qt::Key_A, none, u"\u0416x", "x", "", "x"},
    {"ctrl_a", Qt::Key_A, ctrl, u"\x01", "\x01", "^A", ""},
    {"ctrl_b", Qt::Key_B, ctrl, u"\x02", "\x02", "^B", ""},
    {"ctrl_c_copies_nothing", Qt::Key_C, ctrl, u"\x03", "\x03", "^C", ""},
    {"ctrl_i", Qt::Key_I, ctrl, u"\x09", "\x09", "^I", ""},
    {"ctrl_j", Qt::Key_J, ctrl, u"\x0A", "\x0A", "^J", ""},
    {"ctrl_v_pastes_nothing", Qt::Key_V, ctrl, u"\x16", "\x16", "^V", ""},
    {"ctrl_x_cuts_nothing", Qt::Key_X, ctrl, u"\x18", "\x18", "^X", ""},
    {"ctrl_z_undoes_nothing", Qt::Key_Z, ctrl, u"\x1A", "\x1A", "^Z", ""},
    {"ctrl_letter_without_a_text", Qt::Key_B, ctrl, u"", "\x02", "^B", ""},
    {"ctrl_bracket", Qt::Key_BracketLeft, ctrl, u"\x1B", "\x1B", "^[", ""},
    {"ctrl_underscore", Qt::Key_Underscore, ctrl | shift, u"\x1F", "\x1F", "^_", ""},
    {"escape", Qt::Key_Escape, none, u"\x1B", "\x1B", "^[", ""},
    {"backspace", Qt::Key_Backspace, none, u"\x08", "\x08", "^H", ""},
    {"ctrl_2", Qt::Key_2, ctrl, u"", "\0"sv, "^@", ""},
    {"ctrl_shift_2", Qt::Key_At, ctrl | shift, u"", "\0"sv, "^@", ""},
    {"two", Qt::Key_2, none, u"2", "2", "", "2"},
    {"f9", Qt::Key_F9, none, u"", "\0"sv, "^@", ""},
    {"f10", Qt::Key_F10, none, u"", "\x85", "\x85", ""},
    {"keypad_digit_without_alt", Qt::Key_7, Qt::KeypadModifier, u"7", "7", "", "7"},
    {"at_sign_by_alt_gr_key", Qt::Key_At, Qt::GroupSwitchModifier, u"@", "@", "", "@"},
    {"at_sign_by_alt_gr_as_ctrl_alt", Qt::Key_At, alt_gr_as_ctrl_alt, u"@", "@", "", "@"},
    {"delete_types_nothing", Qt::Key_Delete, none, u"\x7F", "", "", "", false},
    {"arrow", Qt::Key_Left, none, u"", "", "", "", false},
    {"ctrl_insert", Qt::Key_Insert, ctrl, u"", "", "", "", false},
    {"shift_insert", Qt::Key_Insert, shift, u"", "", "", "", false},
    {"keypad_5_without_num_lock", Qt::Key_Clear, Qt::KeypadModifier, u"", "", "", "", false},
    {"f8", Qt::Key_F8, none, u"", "", "", "", false},
    {"shift_itself", Qt::Key_Shift, shift, u"", "", "", "", false},
    {"ctrl_with_a_key_that_has_no_control_character", Qt::Key_5, ctrl, u"\x1D", "", "", "", false},
};

const KeyRow terminal_rows[] = {
    {"enter_begins_a_line", Qt::Key_Return, none, u"\r", "\r", "", "\r"},
    {"keypad_enter", Qt::Key_Enter, Qt::KeypadModifier, u"\r", "\r", "", "\r"},
    {"ctrl_m_as_enter", Qt::Key_M, ctrl, u"\r", "\r", "", "\r"},
    {"tab_moves_the_focus", Qt::Key_Tab, none, u"\t", "", "", "", false},
    {"shift_tab_moves_the_focus", Qt::Key_Backtab, shift, u"", "", "", "", false},
};

const KeyRow full_screen_rows[] = {
    {"enter_is_a_code", Qt::Key_Return, none, u"\r", "\r", "^M", ""},
    {"ctrl_m_as_enter", Qt::Key_M, ctrl, u"\r", "\r", "^M", ""},
    {"tab_is_typed", Qt::Key_Tab, none, u"\t", "\t", "^I", ""},
    {"shift_tab_is_typed", Qt::Key_Backtab, shift, u"", "\t", "^I", ""},
};

class KeysOfBoth : public testing::TestWithParam<KeyRow> {};
class KeysOfTheTerminal : public testing::TestWithParam<KeyRow> {};
class KeysOfTheFullScreen : public testing::TestWithParam<KeyRow> {};

void check(Keyboard::CaretKeys caret_keys, const KeyRow& row) {
  Keyboard keyboard(caret_keys);
  const QString text = QString::fromUtf16(row.text.data(), static_cast<qsizetype>(row.text.size()));
  EXPECT_EQ(keyboard.down(row.key, row.modifiers, text), row.taken);
  EXPECT_TRUE(bytes_equal(keyboard.terminal.sent, row.sent));
  EXPECT_TRUE(bytes_equal(keyboard.terminal.items, row.item));
  EXPECT_TRUE(bytes_equal(keyboard.terminal.typed, row.typed));
}

std::string name_of(const testing::TestParamInfo<KeyRow>& info) {
  return info.param.name;
}

}  // namespace

TEST_P(KeysOfBoth, do_the_same_in_the_terminal) {
  check(Keyboard::CaretKeys::tab_and_enter, GetParam());
}
TEST_P(KeysOfBoth, do_the_same_in_the_full_screen) {
  check(Keyboard::CaretKeys::none, GetParam());
}
TEST_P(KeysOfTheTerminal, do_what_they_do_in_text) {
  check(Keyboard::CaretKeys::tab_and_enter, GetParam());
}
TEST_P(KeysOfTheFullScreen, are_typed_characters) {
  check(Keyboard::CaretKeys::none, GetParam());
}
INSTANTIATE_TEST_SUITE_P(key, KeysOfBoth, testing::ValuesIn(common_rows), name_of);
INSTANTIATE_TEST_SUITE_P(key, KeysOfTheTerminal, testing::ValuesIn(terminal_rows), name_of);
INSTANTIATE_TEST_SUITE_P(key, KeysOfTheFullScreen, testing::ValuesIn(full_screen_rows), name_of);

TEST(terminal_keys, every_ctrl_letter_sends_its_number_and_shows_the_letter_but_enters_own) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    Keyboard keyboard(Keyboard::CaretKeys::none);
    EXPECT_TRUE(keyboard.down(letter, ctrl));
    EXPECT_EQ(keyboard.terminal.sent, std::string(1, static_cast<char>(letter - 'A' + 1)));
    EXPECT_EQ(keyboard.terminal.items, std::string("^") + letter);
  }
}

TEST(terminal_keys, two_sends_nul_as_long_as_ctrl_is_held) {
  Keyboard keyboard;
  EXPECT_TRUE(keyboard.down(Qt::Key_Control, ctrl));
  keyboard.down(Qt::Key_2, none, QStringLiteral("2"));
  keyboard.up(Qt::Key_Control);
  keyboard.down(Qt::Key_2, none, QStringLiteral("2"));
  EXPECT_TRUE(bytes_equal(keyboard.terminal.sent,
                          "\0"
                          "2"_bytes));
}

TEST(terminal_keys, an_at_sign_typed_with_alt_gr_is_no_nul_though_it_comes_with_ctrl) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Control, ctrl);
  keyboard.down(Qt::Key_Alt, alt_gr_as_ctrl_alt);
  keyboard.down(Qt::Key_At, alt_gr_as_ctrl_alt, QStringLiteral("@"));
  keyboard.up(Qt::Key_Alt);
  EXPECT_EQ(keyboard.terminal.sent, "@");
  EXPECT_EQ(keyboard.terminal.typed, "@");
}

TEST(terminal_keys, alt_gr_is_not_alt) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_AltGr);
  keyboard.down(Qt::Key_6, Qt::KeypadModifier, QStringLiteral("6"));
  keyboard.up(Qt::Key_AltGr);
  EXPECT_EQ(keyboard.terminal.sent, "6");
}

TEST(terminal_keys, alt_code_is_shown_and_sent_when_alt_is_released) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Alt);
  keyboard.down(Qt::Key_0, Qt::AltModifier | Qt::KeypadModifier);
  keyboard.down(Qt::Key_6, Qt::AltModifier | Qt::KeypadModifier);
  keyboard.down(Qt::Key_5, Qt::AltModifier | Qt::KeypadModifier);
  EXPECT_EQ(keyboard.terminal.sent, "");
  keyboard.up(Qt::Key_Alt);
  EXPECT_EQ(keyboard.terminal.sent, "A");
  EXPECT_EQ(keyboard.terminal.items, "A");
}

TEST(terminal_keys, alt_code_of_a_control_character_is_shown_as_itself) {
  Keyboard keyboard;
  keyboard.alt_code({Qt::Key_2});
  EXPECT_EQ(keyboard.terminal.sent, "\x02");
  EXPECT_EQ(keyboard.terminal.items, "\x02");
}

TEST(terminal_keys, alt_without_digits_sends_nul) {
  Keyboard keyboard;
  keyboard.alt_code({});
  EXPECT_TRUE(bytes_equal(keyboard.terminal.sent, "\0"_bytes));
}

TEST(terminal_keys, keypad_is_read_in_both_states_of_num_lock) {
  const std::vector<int> without_num_lock{Qt::Key_Insert, Qt::Key_End,   Qt::Key_Down,  Qt::Key_PageDown,
                                          Qt::Key_Left,   Qt::Key_Clear, Qt::Key_Right, Qt::Key_Home,
                                          Qt::Key_Up,     Qt::Key_PageUp};
  for (int digit = 0; digit <= 9; ++digit) {
    Keyboard keyboard;
    keyboard.alt_code({Qt::Key_1, Qt::Key_0 + digit, without_num_lock.at(static_cast<std::size_t>(digit))});
    EXPECT_EQ(keyboard.terminal.sent, std::string(1, static_cast<char>(100 + 11 * digit))) << digit;
  }
}

TEST(terminal_keys, every_key_is_swallowed_while_alt_is_held_and_only_the_keypad_counts) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Alt);
  EXPECT_TRUE(keyboard.down(Qt::Key_X, Qt::AltModifier, QStringLiteral("x")));
  EXPECT_TRUE(keyboard.down(Qt::Key_9, Qt::AltModifier, QStringLiteral("9")));  // of the upper row
  EXPECT_TRUE(keyboard.down(Qt::Key_F9, Qt::AltModifier));
  EXPECT_TRUE(keyboard.down(Qt::Key_Tab, Qt::AltModifier));
  keyboard.down(Qt::Key_7, Qt::AltModifier | Qt::KeypadModifier);
  keyboard.up(Qt::Key_Alt);
  EXPECT_EQ(keyboard.terminal.sent, "\x07");
}

TEST(terminal_keys, alt_held_down_keeps_its_digits) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Alt);
  keyboard.down(Qt::Key_6, Qt::KeypadModifier);
  keyboard.keys.key_down({Qt::Key_Alt, Qt::AltModifier, {}, true});
  keyboard.down(Qt::Key_5, Qt::KeypadModifier);
  keyboard.up(Qt::Key_Alt);
  EXPECT_EQ(keyboard.terminal.sent, "A");
}

TEST(terminal_keys, pressing_alt_again_begins_a_new_code) {
  Keyboard keyboard;
  keyboard.alt_code({Qt::Key_6, Qt::Key_5});
  keyboard.alt_code({Qt::Key_6, Qt::Key_6});
  EXPECT_EQ(keyboard.terminal.sent, "AB");
}

TEST(terminal_keys, alt_code_above_255_sends_and_shows_nothing) {
  for (const auto& digits :
       {std::vector<int>{Qt::Key_2, Qt::Key_5, Qt::Key_6}, std::vector<int>(40, Qt::Key_9)}) {
    Keyboard keyboard;
    keyboard.alt_code(digits);
    EXPECT_EQ(keyboard.terminal.sent, "");
    EXPECT_EQ(keyboard.terminal.items, "");
  }
  Keyboard keyboard;
  keyboard.alt_code({Qt::Key_2, Qt::Key_5, Qt::Key_5});
  EXPECT_EQ(keyboard.terminal.sent, "\xFF");
}

TEST(terminal_keys, alt_code_with_leading_zeros_counts_by_its_value) {
  Keyboard keyboard;
  keyboard.alt_code({Qt::Key_0, Qt::Key_0, Qt::Key_0, Qt::Key_0, Qt::Key_6, Qt::Key_5});
  EXPECT_EQ(keyboard.terminal.sent, "A");
}

TEST(terminal_keys, focus_lost_while_alt_is_held_forgets_the_code) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Alt);
  keyboard.down(Qt::Key_6, Qt::KeypadModifier);
  keyboard.keys.focus_lost();
  keyboard.up(Qt::Key_Alt);
  keyboard.down(Qt::Key_X, none, QStringLiteral("x"));
  EXPECT_EQ(keyboard.terminal.sent, "x");
  EXPECT_EQ(keyboard.terminal.items, "");
}

TEST(terminal_keys, ctrl_is_kept_while_the_focus_is_elsewhere_unless_it_was_let_go_there) {
  Keyboard keyboard;
  keyboard.down(Qt::Key_Control, ctrl);
  keyboard.keys.focus_lost();
  keyboard.keys.focus_gained(ctrl);
  keyboard.down(Qt::Key_2, none, QStringLiteral("2"));
  keyboard.keys.focus_lost();
  keyboard.keys.focus_gained(none);
  keyboard.down(Qt::Key_2, none, QStringLiteral("2"));
  EXPECT_TRUE(bytes_equal(keyboard.terminal.sent,
                          "\0"
                          "2"_bytes));
}

TEST(terminal_keys, alt_release_without_its_press_here_sends_nothing) {
  Keyboard keyboard;
  keyboard.up(Qt::Key_Alt);
  EXPECT_EQ(keyboard.terminal.sent, "");
}

TEST(terminal_keys, the_key_typed_after_an_alt_code_is_not_lost_where_no_character_follows) {
  Keyboard keyboard;
  keyboard.alt_code({Qt::Key_6, Qt::Key_5});
  keyboard.down(Qt::Key_B, none, QStringLiteral("b"));
  EXPECT_EQ(keyboard.terminal.sent, "Ab");
}

TEST(terminal_keys, the_character_that_the_platform_composes_of_an_alt_code_is_swallowed_once) {
  Keyboard keyboard(Keyboard::CaretKeys::tab_and_enter, Keyboard::AfterAltCode::character);
  keyboard.alt_code({Qt::Key_6, Qt::Key_5});
  keyboard.type(0, u'A');
  EXPECT_EQ(keyboard.terminal.sent, "A");
  keyboard.type(0, u'B');
  EXPECT_EQ(keyboard.terminal.sent, "AB");
}

TEST(terminal_keys, the_key_typed_after_an_alt_code_is_not_lost_where_the_platform_composed_none) {
  Keyboard keyboard(Keyboard::CaretKeys::tab_and_enter, Keyboard::AfterAltCode::character);
  keyboard.alt_code({Qt::Key_6, Qt::Key_5});
  keyboard.type(Qt::Key_B, u'b');
  keyboard.type(0, u'c');
  EXPECT_EQ(keyboard.terminal.sent, "Abc");
}

TEST(terminal_keys, alt_without_digits_swallows_no_character) {
  Keyboard keyboard(Keyboard::CaretKeys::tab_and_enter, Keyboard::AfterAltCode::character);
  keyboard.alt_code({});
  keyboard.type(0, u'c');
  EXPECT_TRUE(bytes_equal(keyboard.terminal.sent,
                          "\0"
                          "c"_bytes));
}

TEST(terminal_keys, closed_port_swallows_every_key_but_tab) {
  Keyboard keyboard;
  keyboard.terminal.open = false;
  EXPECT_TRUE(keyboard.down(Qt::Key_A, none, QStringLiteral("a")));
  EXPECT_TRUE(keyboard.down(Qt::Key_F9));
  EXPECT_TRUE(keyboard.down(Qt::Key_F10));
  EXPECT_TRUE(keyboard.down(Qt::Key_Left));
  EXPECT_TRUE(keyboard.down(Qt::Key_B, ctrl));
  EXPECT_FALSE(keyboard.down(Qt::Key_Tab));
  EXPECT_FALSE(keyboard.keys.characters(QStringLiteral("pasted")));
  EXPECT_EQ(keyboard.terminal.sent + keyboard.terminal.items + keyboard.terminal.typed, "");
}

TEST(terminal_keys, closed_port_does_not_see_ctrl) {
  Keyboard keyboard;
  keyboard.terminal.open = false;
  keyboard.down(Qt::Key_Control, ctrl);
  keyboard.terminal.open = true;
  keyboard.down(Qt::Key_2, none, QStringLiteral("2"));
  EXPECT_EQ(keyboard.terminal.sent, "2");
}

TEST(terminal_keys, alt_code_with_the_port_closed_sends_and_shows_nothing) {
  Keyboard keyboard;
  keyboard.terminal.open = false;
  keyboard.alt_code({Qt::Key_6, Qt::Key_5});
  EXPECT_EQ(keyboard.terminal.sent + keyboard.terminal.items, "");
}

TEST(terminal_keys, pasted_characters_are_typed_one_by_one) {
  Keyboard keyboard;
  EXPECT_TRUE(keyboard.keys.characters(QStringLiteral("a\x02\r\u20AC\u0416")));
  EXPECT_EQ(keyboard.terminal.sent, "a\x02\r\x80");
  EXPECT_EQ(keyboard.terminal.items, "^B");
  EXPECT_EQ(keyboard.terminal.typed, "a\r\x80");
}

TEST(terminal_keys, pasting_ends_when_the_line_takes_no_more) {
  Keyboard keyboard;
  keyboard.terminal.takes_bytes = false;
  EXPECT_FALSE(keyboard.keys.characters(QStringLiteral("abc")));
  EXPECT_EQ(keyboard.terminal.typed, "");
}
