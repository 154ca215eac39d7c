#pragma once

#include "simulator/family.h"

#include <array>
#include <string>
#include <string_view>

namespace readersim {

/// Every parameter a command can put into a reader, apart from what has a type of its own in
/// Reader (address, protocol mode, line format, operating mode).
enum class Setting {
  sense_1,
  sense_2,
  sense_delay,
  keyboard_beep,
  keyboard_prefix,
  power_up_red,
  power_up_green,
  good_read_red,
  good_read_green,
  good_read_relay,
  good_read_speaker,
  cr_terminator,
  code_39,
  i_2_of_5,
  two_of_5,
  upca,
  ean13,
  code_128,
  codabar,
  track_1,
  track_2,
  track_1_start_stop,
  track_1_characters,
  track_2_start_stop,
  track_2_c_start,
  first_track_sent,
  record_length,
  relay_time,
  red_led_time,
  rs232_logging,
  bad_logging,
  max_records,
  time_stamping,
  id_1_sent,
  id_2_sent,
  id_1,
  id_2,
  duplicate_suppression,
  comma_delimited,
  logging,
  printing,
  age_1,
  age_2,
  display,
  clock_display,
};
inline constexpr std::size_t setting_count = static_cast<std::size_t>(Setting::clock_display) + 1;

struct SettingTraits {
  Setting setting;
  std::string_view name;     ///< as the console shows and takes it, for example "sense 1"
  std::string_view factory;  ///< its value in a new reader
  Families families;         ///< which readers have it
};
[[nodiscard]] const SettingTraits& traits(Setting setting);
[[nodiscard]] const std::array<SettingTraits, setting_count>& all_settings();

/// The values: "on"/"off" for a switch, a decimal number without leading zeros for an amount, the
/// characters themselves for a text. Times are in seconds, the sounder's in hundredths of a second.
class Settings {
 public:
  explicit Settings(Family family);

  [[nodiscard]] const std::string& get(Setting setting) const;
  /// True when the value is "on".
  [[nodiscard]] bool is_on(Setting setting) const;
  /// The value as a number; 0 when it is none, as it is for "off".
  [[nodiscard]] int number(Setting setting) const;
  void set(Setting setting, std::string_view value);

 private:
  std::array<std::string, setting_count> values_;
};

}  // namespace readersim
