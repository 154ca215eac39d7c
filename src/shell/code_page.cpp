#include "shell/code_page.h"

#include "link/click.h"

#include <algorithm>
#include <string_view>

namespace {

/// Windows-1252 from 0x80 to 0x9F; the unassigned codes are the control characters of the same number.
constexpr std::u16string_view windows_1252_high =
    u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";
static_assert(windows_1252_high.size() == 32);

/// DOS code page 437 from 0x7F to 0xFF, as a DOS display draws it: 0x7F is the little house.
constexpr std::u16string_view dos_437_high =
    u"\u2302"
    u"\u00C7\u00FC\u00E9\u00E2\u00E4\u00E0\u00E5\u00E7\u00EA\u00EB\u00E8\u00EF\u00EE\u00EC\u00C4\u00C5"
    u"\u00C9\u00E6\u00C6\u00F4\u00F6\u00F2\u00FB\u00F9\u00FF\u00D6\u00DC\u00A2\u00A3\u00A5\u20A7\u0192"
    u"\u00E1\u00ED\u00F3\u00FA\u00F1\u00D1\u00AA\u00BA\u00BF\u2310\u00AC\u00BD\u00BC\u00A1\u00AB\u00BB"
    u"\u2591\u2592\u2593\u2502\u2524\u2561\u2562\u2556\u2555\u2563\u2551\u2557\u255D\u255C\u255B\u2510"
    u"\u2514\u2534\u252C\u251C\u2500\u253C\u255E\u255F\u255A\u2554\u2569\u2566\u2560\u2550\u256C\u2567"
    u"\u2568\u2564\u2565\u2559\u2558\u2552\u2553\u256B\u256A\u2518\u250C\u2588\u2584\u258C\u2590\u2580"
    u"\u03B1\u00DF\u0393\u03C0\u03A3\u03C3\u00B5\u03C4\u03A6\u0398\u03A9\u03B4\u221E\u03C6\u03B5\u2229"
    u"\u2261\u00B1\u2265\u2264\u2320\u2321\u00F7\u2248\u00B0\u2219\u00B7\u221A\u207F\u00B2\u25A0\u00A0";
static_assert(dos_437_high.size() == 129);

/// The signs of a DOS display for the control codes.
constexpr std::u16string_view control_glyphs =
    u"\u25A1\u263A\u263B\u2665\u2666\u2663\u2660\u2022\u25D8\u25CB\u25D9\u2642\u2640\u266A\u266B\u263C"
    u"\u25BA\u25C4\u2195\u203C\u00B6\u00A7\u25AC\u21A8\u2191\u2193\u2192\u2190\u221F\u2194\u25B2\u25BC";
static_assert(control_glyphs.size() == 32);

constexpr char16_t control_pictures = u'\u2400';  // the block of visible pictures of the control codes

/// The first character that has no code, both halves of one beyond 16 bits.
QString first_stranger(const QString& text) {
  const auto* const place = std::find_if(
      text.begin(), text.end(), [](QChar character) { return !code_page::to_windows_1252(character); });
  const bool pair = place->isHighSurrogate() && place + 1 != text.end() && (place + 1)->isLowSurrogate();
  return QString(place, pair ? 2 : 1);
}

}  // namespace

std::optional<char> code_page::to_windows_1252(QChar character) {
  const char16_t code = character.unicode();
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
    return static_cast<char>(code);
  }
  const auto place = windows_1252_high.find(code);
  if (place == std::u16string_view::npos) {
    return std::nullopt;
  }
  return static_cast<char>(0x80 + place);
}

std::optional<std::string> code_page::to_windows_1252(const QString& text) {
  std::string bytes;
  for (const QChar character : text) {
    const std::optional<char> byte = to_windows_1252(character);
    if (!byte) {
      return std::nullopt;
    }
    bytes += *byte;
  }
  return bytes;
}

QString code_page::from_windows_1252(std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    text += code >= 0x80 && code <= 0x9F ? QChar(windows_1252_high[code - 0x80U])
                                         : QChar(static_cast<char16_t>(code));
  }
  return text;
}

std::string code_page::bytes_of(const QString& text) {
  std::optional<std::string> bytes = to_windows_1252(text);
  if (!bytes) {
    throw ClickError("The character \"" + first_stranger(text).toStdString() +
                     "\" is not in the readers' character set");
  }
  return *bytes;
}

QChar code_page::from_dos_437(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  if (code < 0x20) {
    return {static_cast<char16_t>(control_pictures + code)};
  }
  return code < 0x7F ? QChar(static_cast<char16_t>(code)) : QChar(dos_437_high[code - 0x7FU]);
}

QString code_page::from_dos_437(std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes) {
    text += from_dos_437(byte);
  }
  return text;
}

QString code_page::dos_glyphs(QString text) {
  for (QChar& character : text) {
    const char16_t code = character.unicode();
    if (code >= control_pictures && code < control_pictures + control_glyphs.size()) {
      character = control_glyphs[static_cast<std::size_t>(code - control_pictures)];
    }
  }
  return text;
}
