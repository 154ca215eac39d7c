#include "config/parameter_rule.h"

#include "link/click.h"
#include "link/numbers.h"

namespace {

std::string filled_up(std::string_view text, std::size_t width) {
  std::string filled(trimmed(text).empty() ? std::string_view{} : text);
  if (filled.size() < width) {
    filled.insert(0, width - filled.size(), '0');
  }
  return filled;
}

}  // namespace

std::string parameter_text(ParameterRule rule, std::string_view text, const ParameterLimit& limit) {
  if (rule == ParameterRule::none) {
    return {};
  }
  if (rule == ParameterRule::prefix_code) {
    if (trimmed(text).empty()) {
      throw ClickError(std::string(limit.refusal));
    }
    return with_leading_zeros(static_cast<unsigned char>(text.front()), 3);
  }
  std::string characters = filled_up(text, rule == ParameterRule::two_digits ? 2 : 3);
  if (!limit.refusal.empty() && number_or_zero(characters) > limit.greatest) {
    throw ClickError(std::string(limit.refusal));
  }
  return characters;
}
