#pragma once

#include <QLineEdit>
#include <QString>

#include <string>

/// The bytes of a text that belongs to a row of a file.
/// @param row as the message names it: "Row 12"
/// @throws ClickError naming the row and the first character that the file's code page lacks
[[nodiscard]] std::string bytes_of_row(const std::string& row, const QString& text);

/// Keeps line ends out of a box whose text goes into a row, from the clipboard too: they would break the row
/// in two.
void keep_to_one_line(QLineEdit& box);
