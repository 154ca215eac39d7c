#include "config/kesh_setup.h"

#include "link/frame.h"
#include "link/numbers.h"

namespace {

constexpr ValueRange ferro_record_length_range{4, 150, "Record length must be between 4 and 150"};
constexpr ValueRange glint_record_length_range{4, 30, "Record length must be between 4 and 30"};

std::string identifier(std::string_view text) {
  std::string filled(text);
  filled.resize(5, ' ');
  return filled;
}

}  // namespace

FerroKeshGeneral ferro_kesh_values(std::string_view record_length, std::string_view max_records) {
  const FerroKeshGeneral values{to_int16_or_zero_when_empty(record_length),
                                to_int16_or_zero_when_empty(max_records)};
  require(values.record_length, ferro_record_length_range);
  return values;
}

std::vector<std::string> ferro_kesh_payloads(const FerroKeshGeneral& values, bool time_stamping) {
  return {"\\" + with_leading_zeros(values.record_length, 3) + flag(time_stamping),
          "r" + with_leading_zeros(values.max_records, 5)};
}

std::int16_t glint_kesh_record_length(std::string_view record_length) {
  const std::int16_t value = to_int16_or_zero_when_empty(record_length);
  require(value, glint_record_length_range);
  return value;
}

std::vector<std::string> glint_kesh_payloads(std::int16_t record_length, const GlintKeshFlags& flags) {
  return {"\\" + with_leading_zeros(record_length, 3) + flag(flags.time_stamping) + flag(flags.id_1) +
          flag(flags.id_2)};
}

std::vector<std::string> kesh_identifier_payloads(std::string_view id_1, std::string_view id_2) {
  return {introduced("1" + identifier(id_1)), introduced("2" + identifier(id_2))};
}
