#include "config/setup_values.h"

#include "link/click.h"

void require(std::int16_t value, const ValueRange& range) {
  if (value < range.least || value > range.greatest) {
    throw ClickError(std::string(range.refusal));
  }
}

std::string flag(bool on) {
  return on ? "1" : "0";
}
