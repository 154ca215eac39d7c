#include "simulator/trace.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {

using readersim::Event;

TEST(Trace, shows_bytes_as_hexadecimal_pairs) {
  EXPECT_EQ(readersim::hex(""), "");
  EXPECT_EQ(readersim::hex("\x00\x0F\xA5\xFF"_bytes), "00 0F A5 FF");
}

TEST(Trace, names_control_characters_and_shows_high_bytes_as_numbers) {
  EXPECT_EQ(readersim::visible("\x85\x02V\x03"), "<85><STX>V<ETX>");
  EXPECT_EQ(readersim::visible("\x00U\r"_bytes), "<NUL>U<CR>");
  EXPECT_EQ(readersim::visible("\x1F ~\x7F"), "<US> ~<7F>");
}

TEST(Trace, tells_direction_bytes_and_meaning) {
  Event event{std::chrono::seconds{1}, Event::Kind::heard, 5, "\x85\x02V\x03", "identification"};
  EXPECT_EQ(describe(event), "pc > 005  85 02 56 03  <85><STX>V<ETX>  identification");
  event.kind = Event::Kind::sent;
  EXPECT_EQ(describe(event), "005 > pc  85 02 56 03  <85><STX>V<ETX>  identification");
  event.address = Event::everybody;
  event.kind = Event::Kind::heard;
  EXPECT_EQ(describe(event), "pc > all  85 02 56 03  <85><STX>V<ETX>  identification");
  event.address = Event::nobody;
  EXPECT_EQ(describe(event), "pc > ---  85 02 56 03  <85><STX>V<ETX>  identification");
}

TEST(Trace, tells_notes_with_the_reader_they_are_about) {
  EXPECT_EQ(describe(Event{{}, Event::Kind::note, 42, "", "unplugged"}), "reader 042: unplugged");
  EXPECT_EQ(describe(Event{{}, Event::Kind::note, Event::nobody, "", "the line hangs up"}),
            "the line hangs up");
}

}  // namespace
