#include "simulator/family.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace readersim {
namespace {

constexpr std::array table{
    FamilyTraits{Family::vell, "Vell", "VELL READER V3.20", '1', "1", 40, 4, 40},
    FamilyTraits{Family::orin, "Orin", "ORIN READER V5.11", '3', "135", 10, 4, 40},
    FamilyTraits{Family::orinta, "Orinta", "ORINTA READER V5.42", '4', "1345", 10, 4, 40},
    FamilyTraits{Family::ferro_kesh, "Ferro Kesh", "FERRO KESH V2.07", '2', "12", 40, 4, 150},
    FamilyTraits{Family::glint_kesh, "Glint Kesh", "GLINT KESH V2.31", '2', "12", 20, 4, 30},
    FamilyTraits{Family::quor, "Quor", "QUOR READER V1.84", '2', "12", 80, 4, 80},
};

bool equal_without_case(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

}  // namespace

const FamilyTraits& traits(Family family) {
  return table.at(static_cast<std::size_t>(family));
}

std::optional<Family> family_named(std::string_view name) {
  const auto* row = std::find_if(table.begin(), table.end(), [&](const FamilyTraits& each) {
    return equal_without_case(each.name, name);
  });
  return row == table.end() ? std::nullopt : std::optional{row->family};
}

std::string identification(Family family, int serial) {
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), " S/N %06d", std::clamp(serial, 0, 999999));
  return std::string{traits(family).firmware} + number.data();
}

std::string_view mode_name(char digit) {
  constexpr std::array<std::string_view, 5> names{"Vell", "Kesh", "Orin", "Orinta", "Accum"};
  return digit >= '1' && digit <= '5' ? names.at(static_cast<std::size_t>(digit - '1')) : "?";
}

}  // namespace readersim
