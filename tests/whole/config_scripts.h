#pragma once

#include "simulator/family.h"
#include "whole/config_steps.h"

#include <ostream>

// How a technician sets up one reader of each family from the screens, one way and then the opposite way, and
// what the reader must be like afterwards. Between them they press everything that sets something.

namespace config_scripts {

struct Script {
  std::string name;
  readersim::Family family;
  Work work;
};

inline void PrintTo(const Script& script, std::ostream* out) {
  *out << script.name;
}

inline std::string name_of(const testing::TestParamInfo<Script>& info) {
  return info.param.name;
}

inline const std::string deletion = "This will delete all data in the reader\rDo you wish to continue?";
inline const std::string parameters_set = "Parameters have been set";
inline const std::string parameter_set = "Parameter has been set";
inline const std::string date_set = "Date/Time set in reader";
inline const std::string mode_set = " Mode Set in Reader ";
inline const std::string ids_set = "ID's have been set";

/// The buttons that every family has: lamps, sounder, terminator, barcodes and tracks.
inline const std::vector<Work> every_reader{
    {{press(vellsetup, "power_up_red_led_on"), press(vellsetup, "power_up_grn_led_on"),
      fill(vellsetup, "Text12", "3", "good_read_red_led_time"),
      fill(vellsetup, "Text13", "15", "good_read_grn_led_time"),
      fill(vellsetup, "Text17", "49", "good_read_spkr_on_time"), press(vellsetup, "c_r_terminator_off"),
      choose(symbology, {"i_2_of_5", "ean13", "codabar"}, "set_barcodes"),
      choose(symbology, {"magstripe_tracks_1"}, "set_magstripe_tracks"),
      choose(symbology, {"track_1_t2_char_set", "track_2_start_stop", "xmit_t2_first"},
             "set_magstripe_options")},
     {{"power up red", "on", "off"},
      {"power up green", "on", "off"},
      {"good read red", "3", "off"},
      {"good read green", "15", "off"},
      {"good read speaker", "49", "off"},
      {"c/r terminator", "off", "on"},
      {"code 39", "off", "on"},
      {"i 2 of 5", "on", "off"},
      {"2 of 5", "off", "on"},
      {"upca", "off", "on"},
      {"ean13", "on", "off"},
      {"code 128", "off", "on"},
      {"codabar", "on", "off"},
      {"track 1", "on", "off"},
      {"track 2", "off", "on"},
      {"track 1 start/stop", "off", "on"},
      {"track 1 character set", "2", "1"},
      {"track 2 start/stop", "on", "off"},
      {"track 2 c start", "off", "on"},
      {"first track sent", "2", "1"}}},
    {{press(vellsetup, "power_up_red_led_off"), press(vellsetup, "power_up_grn_led_off"),
      press(vellsetup, "good_read_red_led_off"), press(vellsetup, "good_read_grn_led_off"),
      press(vellsetup, "no_spkr_for_good_read"), press(vellsetup, "c_r_terminator_on"),
      // What the first way has checked is clicked once more.
      choose(symbology, {"i_2_of_5", "ean13", "codabar", "code_39", "2_of_5", "upca", "code128"},
             "set_barcodes"),
      choose(symbology, {"magstripe_tracks_0"}, "set_magstripe_tracks"),
      choose(symbology,
             {"track_1_t2_char_set", "track_2_start_stop", "xmit_t2_first", "track_1_start_stop",
              "track_2_c_start"},
             "set_magstripe_options")},
     {{"power up red", "off", "on"},
      {"power up green", "off", "on"},
      {"good read red", "off", "3"},
      {"good read green", "off", "15"},
      {"good read speaker", "off", "49"},
      {"c/r terminator", "on", "off"},
      {"code 39", "on", "off"},
      {"i 2 of 5", "off", "on"},
      {"2 of 5", "on", "off"},
      {"upca", "on", "off"},
      {"ean13", "off", "on"},
      {"code 128", "on", "off"},
      {"codabar", "off", "on"},
      {"track 1", "off", "on"},
      {"track 2", "on", "off"},
      {"track 1 start/stop", "on", "off"},
      {"track 1 character set", "1", "2"},
      {"track 2 start/stop", "off", "on"},
      {"track 2 c start", "on", "off"},
      {"first track sent", "1", "2"}}},
    {{choose(symbology, {"magstripe_tracks_2"}, "set_magstripe_tracks")},
     {{"track 1", "on", "off"}, {"track 2", "on", "off"}}},
};

/// One way. Where the reader has a clock, it is set last.
inline const std::vector<Script>& scripts() {
  using enum readersim::Family;
  static const std::vector<Script> all{
      {"vell",
       vell,
       {{press(vellsetup, "sense_1_auto"), press(vellsetup, "sense_2_auto"),
         fill(vellsetup, "Text10", "7", "sense_input_delay_time"), press(vellsetup, "keyboard_disable_beep"),
         fill(vellsetup, "Text11", "*", "keyboard_prefix"),
         fill(vellsetup, "Text14", "9", "good_read_relay_time")},
        {{"sense 1", "auto", "off"},
         {"sense 2", "auto", "off"},
         {"sense delay", "7", "1"},
         {"keyboard beep", "off", "on"},
         {"keyboard prefix", "42", "1"},
         {"good read relay", "9", "off"}}}},
      {"orin",
       orin,
       {{{orinparam,
          {{"Text2", "8"}, {"Text3", "7"}, {"Text5", "12"}},
          {},
          "set_general",
          {deletion, parameters_set}},
         choose(orinparam, {"rs232_logging_0"}, "set_rs232_logging", {" RS232 Logging Option is On "}),
         choose(orinparam, {"orin_mode_0"}, "set_mode", {mode_set}),
         choose(orinparam, {}, "set_date_time", {date_set})},
        {{"record length", "8", "9"},
         {"relay time", "7", "9"},
         {"red led time", "12", "9"},
         {"rs232 logging", "on", "off"},
         {"mode", "Vell", "Accum"}}}},
      {"orinta",
       orinta,
       {{{orinparam,
          {{"Text2", "40"}, {"Text3", "99"}, {"Text5", "1"}},
          {},
          "set_general",
          {deletion, parameters_set}},
         choose(orinparam, {"bad_logging_1"}, "set_bad_logging", {" Bad Logging Option Reset "}),
         choose(orinparam, {"orin_mode_3"}, "set_mode", {mode_set}),
         choose(orinparam, {}, "set_date_time", {date_set})},
        {{"record length", "40", "9"},
         {"relay time", "99", "9"},
         {"red led time", "1", "9"},
         {"bad logging", "off", "on"},
         {"mode", "Accum", "Vell"}}}},
      {"ferro_kesh",
       ferro_kesh,
       {{{keshsetup,
          {{"Text21", "150"}, {"Text20", "2000"}},
          {"ferro_time_stamping_1"},
          "set_ferro_kesh_general",
          {deletion, parameters_set}},
         choose(keshsetup, {"kesh_rs232_logging_0"}, "set_kesh_rs232_logging", {parameter_set}),
         choose(keshsetup, {"duplicate_read_0"}, "set_duplicate_read", {parameter_set}),
         choose(keshsetup, {"comma_delimited_0"}, "set_comma_delimited", {parameter_set}),
         choose(keshsetup, {"kesh_mode_0"}, "set_kesh_mode", {parameter_set}),
         choose(keshsetup, {}, "set_date_time", {date_set})},
        {{"record length", "150", "9"},
         {"max records", "2000", "9"},
         {"time stamping", "off", "on"},
         {"rs232 logging", "on", "off"},
         {"duplicate suppression", "on", "off"},
         {"comma delimited", "on", "off"},
         {"mode", "Vell", "Kesh"}}}},
      {"glint_kesh",
       glint_kesh,
       {{{keshsetup,
          {{"Text19", "20"}},
          {"glint_time_stamping_1", "id_1_on"},
          "set_glint_kesh_general",
          {deletion, parameters_set}},
         {keshsetup, {{"Text22", "AB"}, {"Text23", "12345"}}, {}, "set_ids", {ids_set}},
         choose(keshsetup, {"comma_delimited_0"}, "set_comma_delimited", {parameter_set}),
         choose(keshsetup, {}, "set_date_time", {date_set})},
        {{"record length", "20", "9"},
         {"time stamping", "off", "on"},
         {"id 1 sent", "on", "off"},
         {"id 2 sent", "off", "on"},
         {"id 1", "AB   ", "first"},
         {"id 2", "12345", "other"},
         {"comma delimited", "on", "off"}}}},
      {"quor",
       quor,
       {{choose(quorsetup, {"print_on"}, "set_quor_general"),
         {quorsetup, {{"Text26", "5"}, {"Text27", "21"}}, {}, "set_quor_ages", {}},
         choose(quorsetup, {}, "set_date_time", {date_set})},
        {{"logging", "off", "on"}, {"printing", "on", "off"}, {"age 1", "5", "7"}, {"age 2", "21", "7"}}}},
  };
  return all;
}

/// The opposite way.
inline const std::vector<Script>& opposite_scripts() {
  using enum readersim::Family;
  static const std::vector<Script> all{
      {"vell_again",
       vell,
       {{press(vellsetup, "sense_inputs_off"), press(vellsetup, "keyboard_enable_beep"),
         press(vellsetup, "no_relay_for_good_read")},
        {{"sense 1", "off", "auto"},
         {"sense 2", "off", "auto"},
         {"keyboard beep", "on", "off"},
         {"good read relay", "off", "9"}}}},
      {"orin_again",
       orin,
       {{choose(orinparam, {"rs232_logging_1"}, "set_rs232_logging", {" RS232 Logging Option is Off "}),
         choose(orinparam, {"orin_mode_1"}, "set_mode", {mode_set})},
        {{"rs232 logging", "off", "on"}, {"mode", "Orin", "Vell"}}}},
      {"orinta_again",
       orinta,
       {{choose(orinparam, {"bad_logging_0"}, "set_bad_logging", {" Bad Logging Option Set "}),
         choose(orinparam, {"orin_mode_2"}, "set_mode", {mode_set})},
        {{"bad logging", "on", "off"}, {"mode", "Orinta", "Accum"}}}},
      {"ferro_kesh_again",
       ferro_kesh,
       {{{keshsetup,
          {{"Text21", "4"}, {"Text20", ""}},
          {"ferro_time_stamping_0"},
          "set_ferro_kesh_general",
          {deletion, parameters_set}},
         choose(keshsetup, {"kesh_rs232_logging_1"}, "set_kesh_rs232_logging", {parameter_set}),
         choose(keshsetup, {"duplicate_read_1"}, "set_duplicate_read", {parameter_set}),
         choose(keshsetup, {"comma_delimited_1"}, "set_comma_delimited", {parameter_set}),
         choose(keshsetup, {"kesh_mode_1"}, "set_kesh_mode", {parameter_set})},
        {{"record length", "4", "9"},
         {"max records", "0", "9"},
         {"time stamping", "on", "off"},
         {"rs232 logging", "off", "on"},
         {"duplicate suppression", "off", "on"},
         {"comma delimited", "off", "on"},
         {"mode", "Kesh", "Vell"}}}},
      {"glint_kesh_again",
       glint_kesh,
       {{{keshsetup,
          {{"Text19", "30"}},
          {"glint_time_stamping_0", "id_2_on"},
          "set_glint_kesh_general",
          {deletion, parameters_set}},
         {keshsetup, {{"Text22", ""}, {"Text23", "x"}}, {}, "set_ids", {ids_set}}},
        {{"record length", "30", "9"},
         {"time stamping", "on", "off"},
         {"id 1 sent", "off", "on"},
         {"id 2 sent", "on", "off"},
         {"id 1", "     ", "first"},
         {"id 2", "x    ", "other"}}}},
      {"quor_again",
       quor,
       {{choose(quorsetup, {"logging_on"}, "set_quor_general"),
         {quorsetup, {{"Text26", "99"}, {"Text27", "0"}}, {}, "set_quor_ages", {}}},
        {{"logging", "on", "off"}, {"printing", "off", "on"}, {"age 1", "99", "7"}, {"age 2", "0", "7"}}}},
  };
  return all;
}

}  // namespace config_scripts
