#include "simulator/settings.h"

#include <charconv>

namespace readersim {
namespace {

constexpr std::array<SettingTraits, setting_count> table{{
    {Setting::sense_1, "sense 1", "off", sense_families},
    {Setting::sense_2, "sense 2", "off", sense_families},
    {Setting::sense_delay, "sense delay", "0", sense_families},
    {Setting::keyboard_beep, "keyboard beep", "on", keyboard_families},
    {Setting::keyboard_prefix, "keyboard prefix", "0", keyboard_families},
    {Setting::power_up_red, "power up red", "off", every_family},
    {Setting::power_up_green, "power up green", "off", every_family},
    {Setting::good_read_red, "good read red", "off", every_family},
    {Setting::good_read_green, "good read green", "1", every_family},
    {Setting::good_read_relay, "good read relay", "off", relay_families},
    {Setting::good_read_speaker, "good read speaker", "20", every_family},
    {Setting::cr_terminator, "c/r terminator", "on", every_family},
    {Setting::code_39, "code 39", "on", every_family},
    {Setting::i_2_of_5, "i 2 of 5", "off", every_family},
    {Setting::two_of_5, "2 of 5", "off", every_family},
    {Setting::upca, "upca", "off", every_family},
    {Setting::ean13, "ean13", "off", every_family},
    {Setting::code_128, "code 128", "off", every_family},
    {Setting::codabar, "codabar", "off", every_family},
    {Setting::track_1, "track 1", "off", every_family},
    {Setting::track_2, "track 2", "on", every_family},
    {Setting::track_1_start_stop, "track 1 start/stop", "off", every_family},
    {Setting::track_1_characters, "track 1 character set", "1", every_family},
    {Setting::track_2_start_stop, "track 2 start/stop", "off", every_family},
    {Setting::track_2_c_start, "track 2 c start", "off", every_family},
    {Setting::first_track_sent, "first track sent", "1", every_family},
    {Setting::record_length, "record length", "", record_families},  // from the family's own traits
    {Setting::relay_time, "relay time", "5", access_families},
    {Setting::red_led_time, "red led time", "2", access_families},
    {Setting::rs232_logging, "rs232 logging", "off", rs232_logging_families},
    {Setting::bad_logging, "bad logging", "on", orinta_only},
    {Setting::max_records, "max records", "0", ferro_only},
    {Setting::time_stamping, "time stamping", "on", collecting_families},
    {Setting::id_1_sent, "id 1 sent", "off", glint_only},
    {Setting::id_2_sent, "id 2 sent", "off", glint_only},
    {Setting::id_1, "id 1", "     ", glint_only},
    {Setting::id_2, "id 2", "     ", glint_only},
    {Setting::duplicate_suppression, "duplicate suppression", "off", kesh_families},
    {Setting::comma_delimited, "comma delimited", "off", kesh_families},
    {Setting::logging, "logging", "on", quor_only},
    {Setting::printing, "printing", "off", quor_only},
    {Setting::age_1, "age 1", "0", quor_only},
    {Setting::age_2, "age 2", "0", quor_only},
    {Setting::display, "display", "", display_families},
    {Setting::clock_display, "clock display", "", display_families},
}};

constexpr bool in_order() {
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (static_cast<std::size_t>(table.at(i).setting) != i) {
      return false;
    }
  }
  return true;
}
static_assert(in_order(), "the table follows the enumeration");

}  // namespace

const SettingTraits& traits(Setting setting) {
  return table.at(static_cast<std::size_t>(setting));
}

const std::array<SettingTraits, setting_count>& all_settings() {
  return table;
}

Settings::Settings(Family family) {
  for (const SettingTraits& each : table) {
    set(each.setting, each.factory);
  }
  set(Setting::record_length, std::to_string(traits(family).record_length));
}

const std::string& Settings::get(Setting setting) const {
  return values_.at(static_cast<std::size_t>(setting));
}

bool Settings::is_on(Setting setting) const {
  return get(setting) == "on";
}

int Settings::number(Setting setting) const {
  const std::string& text = get(setting);
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void Settings::set(Setting setting, std::string_view value) {
  values_.at(static_cast<std::size_t>(setting)) = value;
}

}  // namespace readersim
