#pragma once

#include "config/setup_values.h"

#include <string>
#include <string_view>
#include <vector>

// What the Kesh readers are set up with. Ferro and Glint Kesh share the command of the record length with
// the Orin readers; the width of the value and the flags behind it tell them apart.

struct FerroKeshGeneral {
  std::int16_t record_length = 0;
  std::int16_t max_records = 0;
};

/// An empty box counts as 0. Both are converted before the record length is checked; the other is not.
/// @throws ClickError: "Overflow", "Type mismatch" or the refusal
[[nodiscard]] FerroKeshGeneral ferro_kesh_values(std::string_view record_length,
                                                 std::string_view max_records);
[[nodiscard]] std::vector<std::string> ferro_kesh_payloads(const FerroKeshGeneral& values,
                                                           bool time_stamping);

struct GlintKeshFlags {
  bool time_stamping = false;
  bool id_1 = false;
  bool id_2 = false;
};

/// The record length, as above. @throws ClickError
[[nodiscard]] std::int16_t glint_kesh_record_length(std::string_view record_length);
[[nodiscard]] std::vector<std::string> glint_kesh_payloads(std::int16_t record_length,
                                                           const GlintKeshFlags& flags);

/// Each identifier is filled up with blanks to five characters.
[[nodiscard]] std::vector<std::string> kesh_identifier_payloads(std::string_view id_1, std::string_view id_2);

inline constexpr std::string_view parameter_set = "Parameter has been set";

inline constexpr Switch kesh_rs232_logging{
    .on = "s1", .off = "s0", .done_on = parameter_set, .done_off = parameter_set};
inline constexpr Switch kesh_duplicate_read{
    .on = "d1", .off = "d0", .done_on = parameter_set, .done_off = parameter_set};
inline constexpr Switch kesh_comma_delimited{
    .on = "y1", .off = "y0", .done_on = parameter_set, .done_off = parameter_set};
/// "Vell" or "Kesh".
inline constexpr Switch kesh_mode{
    .on = "|1", .off = "|2", .done_on = parameter_set, .done_off = parameter_set};
