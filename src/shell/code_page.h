#pragma once

#include <QChar>
#include <QString>

#include <optional>
#include <string>
#include <string_view>

/// The one place where bytes of the wire and of files become text, and text becomes bytes.
namespace code_page {

/// What people type, as bytes of Windows-1252. Its five unassigned codes stand for themselves, so that
/// every byte value survives a round trip. @return nothing when a character is not among them.
[[nodiscard]] std::optional<std::string> to_windows_1252(const QString& text);
[[nodiscard]] std::optional<char> to_windows_1252(QChar character);
[[nodiscard]] QString from_windows_1252(std::string_view bytes);

/// As to_windows_1252(), for a click that cannot go on without the bytes.
/// @throws ClickError naming the first character that has no code.
[[nodiscard]] std::string bytes_of(const QString& text);

/// What the terminals and the chart show: DOS code page 437 from 127 on, ASCII below. A control character
/// is one character, a picture of itself; none breaks a line and NUL cuts nothing.
[[nodiscard]] QChar from_dos_437(char byte);
[[nodiscard]] QString from_dos_437(std::string_view bytes);

/// The same text as a DOS display draws it: the pictures of control characters as its small signs, which
/// fixed-pitch fonts have and which stay readable in one cell. NUL, blank there, is an empty frame.
[[nodiscard]] QString dos_glyphs(QString text);

}  // namespace code_page
