#include "simulator/command.h"

#include <charconv>

namespace readersim {
namespace {

bool fits_one(char c, char form) {
  switch (form) {
    case '#':
      return c >= '0' && c <= '9';
    case 'b':
      return c == '0' || c == '1';
    default:
      return true;
  }
}

Verdict refused(const Reader& reader, const Command* row) {
  if (row == nullptr) {
    return {Verdict::Kind::refused, {}, 0, "not understood"};
  }
  return {Verdict::Kind::refused,
          {},
          0,
          "not for a " + std::string{traits(reader.family).name} + " reader: " + std::string{row->meaning}};
}

}  // namespace

bool fits(std::string_view text, std::string_view pattern) {
  if (!pattern.empty() && pattern.back() == '*') {
    return text.size() >= pattern.size() - 1 &&
           fits(text.substr(0, pattern.size() - 1), pattern.substr(0, pattern.size() - 1));
  }
  if (text.size() != pattern.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!fits_one(text[i], pattern[i])) {
      return false;
    }
  }
  return true;
}

int number_in(std::string_view text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

Verdict obey(Reader& reader, std::string_view command, TimePoint now) {
  const bool introduced = command.starts_with('\0');
  const std::string_view text = command.substr(introduced ? 1 : 0);
  const Command* foreign = nullptr;
  for (const Command& row : vocabulary()) {
    if (row.introduced != introduced || !text.starts_with(row.letters)) {
      continue;
    }
    const std::string_view argument = text.substr(row.letters.size());
    if (!fits(argument, row.argument)) {
      continue;
    }
    if (!row.families.has(reader.family)) {
      foreign = &row;
      continue;
    }
    Verdict verdict = row.handler(reader, row, argument, now);
    if (verdict.kind == Verdict::Kind::refused) {
      verdict.meaning = std::string{row.meaning} + ": out of range";
    } else if (verdict.meaning.empty()) {
      verdict.meaning = row.meaning;
    }
    return verdict;
  }
  return refused(reader, foreign);
}

Verdict done(std::string_view meaning) {
  return {Verdict::Kind::done, {}, 0, std::string{meaning}};
}

}  // namespace readersim
