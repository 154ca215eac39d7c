#include "access/row_text.h"

#include "link/click.h"
#include "shell/code_page.h"

std::string bytes_of_row(const std::string& row, const QString& text) {
  if (std::optional<std::string> bytes = code_page::to_windows_1252(text)) {
    return *std::move(bytes);
  }
  qsizetype place = 0;
  while (code_page::to_windows_1252(text[place])) {
    ++place;
  }
  // A character beyond the first plane is two code units, and is shown whole.
  const QString character = text.mid(place, text[place].isHighSurrogate() ? 2 : 1);
  throw ClickError(row + ": the character \"" + character.toStdString() +
                   "\" cannot be saved, it is not in the file's character set");
}
