#pragma once

#include "shell/main_window.h"
#include "simulator/family.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// How a technician sets up one reader of each family from the screens, and what the reader must be like
// afterwards.

namespace config_scripts {

constexpr int vellsetup = 1;
constexpr int orinparam = 2;
constexpr int keshsetup = 3;
constexpr int quorsetup = 4;
constexpr int symbology = 8;
constexpr int keshutil = 11;

/// Boxes filled, choices made, a button pressed, and the boxes that follow.
struct Step {
  int menu;
  std::vector<std::pair<std::string, std::string>> boxes;
  std::vector<std::string> choices;
  std::string button;
  std::vector<std::string> messages;
};

struct Wanted {
  std::string name;  ///< as the reader's report has it
  std::string value;
};

struct Script {
  std::string name;
  readersim::Family family;
  std::vector<Step> steps;
  std::vector<Wanted> wanted;
};

inline void PrintTo(const Script& script, std::ostream* out) {
  *out << script.name;
}

inline const std::string deletion = "This will delete all data in the reader\rDo you wish to continue?";
inline const std::string parameters_set = "Parameters have been set";
inline const std::string parameter_set = "Parameter has been set";
inline const std::string date_set = "Date/Time set in reader";

inline Step press(int menu, std::string button) {
  return {menu, {}, {}, std::move(button), {}};
}
inline Step fill(int menu, std::string box, std::string text, std::string button) {
  return {menu, {{std::move(box), std::move(text)}}, {}, std::move(button), {}};
}
inline Step choose(int menu, std::vector<std::string> choices, std::string button,
                   std::vector<std::string> messages = {}) {
  return {menu, {}, std::move(choices), std::move(button), std::move(messages)};
}

/// The buttons that every family has: lamps, sounder, terminator, barcodes and tracks.
inline const std::vector<Step> every_reader{
    press(vellsetup, "power_up_red_led_on"),
    press(vellsetup, "power_up_grn_led_on"),
    fill(vellsetup, "Text12", "3", "good_read_red_led_time"),
    fill(vellsetup, "Text13", "15", "good_read_grn_led_time"),
    fill(vellsetup, "Text17", "49", "good_read_spkr_on_time"),
    press(vellsetup, "c_r_terminator_off"),
    choose(symbology, {"i_2_of_5", "ean13", "codabar"}, "set_barcodes"),
    choose(symbology, {"magstripe_tracks_1"}, "set_magstripe_tracks"),
    choose(symbology, {"track_1_t2_char_set", "track_2_start_stop", "xmit_t2_first"},
           "set_magstripe_options"),
};
inline const std::vector<Wanted> every_reader_wanted{
    {"power up red", "on"},
    {"power up green", "on"},
    {"good read red", "3"},
    {"good read green", "15"},
    {"good read speaker", "49"},
    {"c/r terminator", "off"},
    {"code 39", "off"},
    {"i 2 of 5", "on"},
    {"2 of 5", "off"},
    {"upca", "off"},
    {"ean13", "on"},
    {"code 128", "off"},
    {"codabar", "on"},
    {"track 1", "on"},
    {"track 2", "off"},
    {"track 1 start/stop", "off"},
    {"track 1 character set", "2"},
    {"track 2 start/stop", "on"},
    {"track 2 c start", "off"},
    {"first track sent", "2"},
};

inline const std::vector<Script>& scripts() {
  static const std::vector<Script> all{
      {"vell",
       readersim::Family::vell,
       {press(vellsetup, "sense_1_auto"), press(vellsetup, "sense_2_auto"),
        fill(vellsetup, "Text10", "7", "sense_input_delay_time"), press(vellsetup, "keyboard_disable_beep"),
        fill(vellsetup, "Text11", "*", "keyboard_prefix"),
        fill(vellsetup, "Text14", "9", "good_read_relay_time")},
       {{"sense 1", "auto"},
        {"sense 2", "auto"},
        {"sense delay", "7"},
        {"keyboard beep", "off"},
        {"keyboard prefix", "42"},
        {"good read relay", "9"}}},
      {"orin",
       readersim::Family::orin,
       {{orinparam,
         {{"Text2", "8"}, {"Text3", "7"}, {"Text5", "12"}},
         {},
         "set_general",
         {deletion, parameters_set}},
        choose(orinparam, {"rs232_logging_0"}, "set_rs232_logging", {" RS232 Logging Option is On "}),
        choose(orinparam, {"orin_mode_0"}, "set_mode", {" Mode Set in Reader "}),
        choose(orinparam, {}, "set_date_time", {date_set})},
       {{"record length", "8"},
        {"relay time", "7"},
        {"red led time", "12"},
        {"rs232 logging", "on"},
        {"mode", "Vell"}}},
      {"orinta",
       readersim::Family::orinta,
       {{orinparam,
         {{"Text2", "40"}, {"Text3", "99"}, {"Text5", "1"}},
         {},
         "set_general",
         {deletion, parameters_set}},
        choose(orinparam, {"bad_logging_1"}, "set_bad_logging", {" Bad Logging Option Reset "}),
        choose(orinparam, {"orin_mode_3"}, "set_mode", {" Mode Set in Reader "}),
        choose(orinparam, {}, "set_date_time", {date_set})},
       {{"record length", "40"},
        {"relay time", "99"},
        {"red led time", "1"},
        {"bad logging", "off"},
        {"mode", "Accum"}}},
      {"ferro_kesh",
       readersim::Family::ferro_kesh,
       {{keshsetup,
         {{"Text21", "150"}, {"Text20", "2000"}},
         {"ferro_time_stamping_1"},
         "set_ferro_kesh_general",
         {deletion, parameters_set}},
        choose(keshsetup, {"kesh_rs232_logging_0"}, "set_kesh_rs232_logging", {parameter_set}),
        choose(keshsetup, {"duplicate_read_0"}, "set_duplicate_read", {parameter_set}),
        choose(keshsetup, {"comma_delimited_0"}, "set_comma_delimited", {parameter_set}),
        choose(keshsetup, {"kesh_mode_0"}, "set_kesh_mode", {parameter_set}),
        choose(keshsetup, {}, "set_date_time", {date_set})},
       {{"record length", "150"},
        {"max records", "2000"},
        {"time stamping", "off"},
        {"rs232 logging", "on"},
        {"duplicate suppression", "on"},
        {"comma delimited", "on"},
        {"mode", "Vell"}}},
      {"glint_kesh",
       readersim::Family::glint_kesh,
       {{keshsetup,
         {{"Text19", "20"}},
         {"glint_time_stamping_1", "id_1_on"},
         "set_glint_kesh_general",
         {deletion, parameters_set}},
        {keshsetup, {{"Text22", "AB"}, {"Text23", "12345"}}, {}, "set_ids", {"ID's have been set"}},
        choose(keshsetup, {"comma_delimited_0"}, "set_comma_delimited", {parameter_set}),
        choose(keshsetup, {}, "set_date_time", {date_set})},
       {{"record length", "20"},
        {"time stamping", "off"},
        {"id 1 sent", "on"},
        {"id 2 sent", "off"},
        {"id 1", "AB   "},
        {"id 2", "12345"},
        {"comma delimited", "on"}}},
      {"quor",
       readersim::Family::quor,
       {choose(quorsetup, {"print_on"}, "set_quor_general"),
        {quorsetup, {{"Text26", "5"}, {"Text27", "21"}}, {}, "set_quor_ages", {}},
        choose(quorsetup, {}, "set_date_time", {date_set})},
       {{"logging", "off"}, {"printing", "on"}, {"age 1", "5"}, {"age 2", "21"}}},
  };
  return all;
}

inline std::string name_of(const testing::TestParamInfo<Script>& info) {
  return info.param.name;
}

/// A control of the screen on show by its object name.
inline QWidget* control_of(const MainWindow& window, const std::string& object_name) {
  auto* const widget =
      window.screen(window.screen_code())->findChild<QWidget*>(QString::fromStdString(object_name));
  if (widget == nullptr) {
    throw std::runtime_error("no control " + object_name);
  }
  return widget;
}

/// Types as a person does who replaces what stands in a box.
inline void retype(QWidget* box, const std::string& text) {
  QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, QString::fromStdString(text));
}

template <typename Bench>
void perform(Bench& bench, const Step& step) {
  bench.click_menu(step.menu);
  for (const auto& [box, text] : step.boxes) {
    retype(control_of(bench.window, box), text);
  }
  for (const std::string& choice : step.choices) {
    bench.click(control_of(bench.window, choice));
  }
  for (const std::string& message : step.messages) {
    bench.dialogs.expect_message(message);
  }
  bench.click(control_of(bench.window, step.button));
}

}  // namespace config_scripts
