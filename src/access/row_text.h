#pragma once

#include <QString>

#include <string>

/// The bytes of a text that belongs to a row of a file.
/// @param row as the message names it: "Row 12"
/// @throws ClickError naming the row and the first character that the file's code page lacks
[[nodiscard]] std::string bytes_of_row(const std::string& row, const QString& text);
