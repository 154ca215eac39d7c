#include "shell/code_page.h"

#include "link/click.h"
#include "support/bytes.h"

TEST(code_page, every_byte_survives_the_way_to_text_and_back) {
  for (int code = 0; code <= 0xFF; ++code) {
    const std::string byte(1, static_cast<char>(code));
    EXPECT_EQ(code_page::to_windows_1252(code_page::from_windows_1252(byte)), byte) << code;
  }
}

TEST(code_page, typed_characters_become_windows_1252) {
  EXPECT_EQ(code_page::to_windows_1252(QStringLiteral("A~\u00E9\u20AC\u201C\u0178")), "A~\xE9\x80\x93\x9F");
}

TEST(code_page, a_character_outside_windows_1252_has_no_byte) {
  EXPECT_EQ(code_page::to_windows_1252(QStringLiteral("a\u0416")), std::nullopt);
  EXPECT_EQ(code_page::to_windows_1252(QStringLiteral("\U0001F600")), std::nullopt);
  EXPECT_EQ(code_page::to_windows_1252(QString()), "");
}

TEST(code_page, bytes_of_names_the_first_character_that_has_no_byte) {
  const std::vector<std::pair<QString, std::string>> strangers{
      {QStringLiteral("ab\u0416\u03A9"), "\u0416"},
      {QStringLiteral("a\U0001F600\u0416"), "\U0001F600"},  // beyond 16 bits: both halves of it
      {QStringLiteral("\U0001F600"), "\U0001F600"},
  };
  for (const auto& [text, named] : strangers) {
    try {
      (void)code_page::bytes_of(text);
      ADD_FAILURE() << "no error for " << named;
    } catch (const ClickError& error) {
      EXPECT_EQ(error.what(), "The character \"" + named + "\" is not in the readers' character set");
    }
  }
}

TEST(code_page, the_terminals_show_127_and_above_as_dos_characters) {
  EXPECT_EQ(code_page::from_dos_437("\x7F\x80\x85\xB0\xDB\xE1\xFE"),
            QStringLiteral("\u2302\u00C7\u00E0\u2591\u2588\u00DF\u25A0"));
  EXPECT_EQ(code_page::from_dos_437('\xFF'), QChar(0x00A0));
}

TEST(code_page, the_dos_characters_are_all_different) {
  QString all;
  for (int code = 0; code <= 0xFF; ++code) {
    const QChar character = code_page::from_dos_437(static_cast<char>(code));
    EXPECT_FALSE(all.contains(character)) << code;
    all += character;
  }
}

TEST(code_page, a_control_character_is_one_visible_character_and_breaks_nothing) {
  EXPECT_EQ(code_page::from_dos_437("\0\x02\n\x1B"_bytes), QStringLiteral("\u2400\u2402\u240A\u241B"));
  EXPECT_EQ(code_page::from_dos_437("OK ~"), QStringLiteral("OK ~"));
}

TEST(code_page, pictures_of_control_characters_are_drawn_as_the_signs_of_a_dos_display) {
  EXPECT_EQ(code_page::dos_glyphs(code_page::from_dos_437(std::string_view("\0\x01 A\x1F\x80", 6))),
            QStringLiteral("\u25A1\u263A A\u25BC\u00C7"));
}
