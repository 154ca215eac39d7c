#include "tools/byte_text.h"

#include "support/bytes.h"

TEST(byte_text, the_first_line_continues_and_every_other_begins_anew) {
  ByteText text;
  text.append({"OK", ""});
  text.append({"A", "B"});
  EXPECT_EQ(text.lines(), (std::vector<std::string>{"OK", "A", "B"}));
  EXPECT_EQ(text.text(), QStringLiteral("OK\nA\nB"));
  EXPECT_EQ(text.size(), 6);
}

TEST(byte_text, keeps_every_byte_value_in_one_line) {
  std::string all;
  for (int code = 0; code < 256; ++code) {
    all += static_cast<char>(code);
  }
  ByteText text;
  text.append({all});
  EXPECT_TRUE(bytes_equal(text.lines().front(), all));
  EXPECT_EQ(text.size(), 256);
  EXPECT_EQ(text.text().size(), 256);
  EXPECT_FALSE(text.text().contains(u'\n'));
}

TEST(byte_text, offsets_and_places_are_each_others_inverse) {
  ByteText text;
  text.append({"ab", "", "cde"});
  for (int offset = 0; offset <= text.size(); ++offset) {
    EXPECT_EQ(text.offset_of(text.place_of(offset)), offset);
  }
  EXPECT_EQ(text.place_of(2), (ByteText::Place{0, 2}));
  EXPECT_EQ(text.place_of(3), (ByteText::Place{1, 0}));
  EXPECT_EQ(text.place_of(4), (ByteText::Place{2, 0}));
  EXPECT_EQ(text.place_of(-1), (ByteText::Place{0, 0}));
  EXPECT_EQ(text.place_of(1000), (ByteText::Place{2, 3}));
}

TEST(byte_text, inserts_breaks_and_erases_anywhere) {
  ByteText text;
  text.append({"abc", "def"});
  text.insert(1, "X");
  text.break_line(2);
  EXPECT_EQ(text.text(), QStringLiteral("aX\nbc\ndef"));
  text.erase(1, 4);
  EXPECT_EQ(text.text(), QStringLiteral("ac\ndef"));
  EXPECT_EQ(text.text(1, 5), QStringLiteral("c\nde"));
  text.erase(0, text.size());
  EXPECT_EQ(text.lines(), std::vector<std::string>{""});
}

TEST(byte_text, knows_its_longest_line_until_it_is_cleared) {
  ByteText text;
  text.append({"ab", "abcd", "a"});
  text.append({"bc"});
  EXPECT_EQ(text.longest(), 4);
  text.clear();
  EXPECT_EQ(text.longest(), 0);
  EXPECT_EQ(text.size(), 0);
}
