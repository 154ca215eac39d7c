#include "tools/fullterm_page.h"

namespace {

constexpr int columns = 79;
constexpr int lines = 30;
constexpr std::string_view received_mark = "\xFF\xFF";

}  // namespace

void FullTermPage::draw(std::string_view item, PageSurface::Ink ink) {
  checkline();
  surface_.draw(item, ink);
  captured_ += item;
  column_ += static_cast<int>(item.size());
}

/// Runs before every item.
void FullTermPage::checkline() {
  if (column_ < columns) {
    return;
  }
  column_ = 0;
  ++line_;
  if (line_ > lines) {
    surface_.clear();
    line_ = 1;
  } else {
    surface_.end_line();
  }
}

void FullTermPage::mark() {
  captured_ += received_mark;
}

void FullTermPage::clear() {
  surface_.clear();
  captured_.clear();
  column_ = 0;
  line_ = 1;
}
