// What stands on every button, option and check box of the reader setup screens and in which frame: whoever
// presses one must get what it says.

#include "config/screen_checks.h"

#include <QGroupBox>

#include <algorithm>

namespace {

struct Control {
  const char* object_name;
  const char* caption;
  const char* frame;  ///< the title of the frame in which it stands
};

struct SetupScreenTexts {
  const char* name;
  ScreenCode code;
  std::vector<Control> controls;
};

void PrintTo(const SetupScreenTexts& screen, std::ostream* out) {
  *out << screen.name;
}

/// Each caption says all; the frames only gather what belongs together.
const SetupScreenTexts vellsetup{"vellsetup",
                                 ScreenCode::vellsetup,
                                 {
                                     {"sense_1_auto", "Sense 1 Auto", "Sense Inputs"},
                                     {"sense_2_auto", "Sense 2 Auto", "Sense Inputs"},
                                     {"sense_inputs_off", "Sense Inputs Off", "Sense Inputs"},
                                     {"sense_input_delay_time", "Sense Input Delay Time", "Sense Inputs"},
                                     {"keyboard_enable_beep", "Keyboard Enable Beep", "Keyboard"},
                                     {"keyboard_disable_beep", "Keyboard Disable Beep", "Keyboard"},
                                     {"keyboard_prefix", "Keyboard Prefix", "Keyboard"},
                                     {"power_up_red_led_on", "Power Up Red Led On", "Power Up Leds"},
                                     {"power_up_red_led_off", "Power Up Red Led Off", "Power Up Leds"},
                                     {"power_up_grn_led_on", "Power Up Grn Led On", "Power Up Leds"},
                                     {"power_up_grn_led_off", "Power Up Grn Led Off", "Power Up Leds"},
                                     {"good_read_red_led_time", "Good Read Red Led Time", "Good Read"},
                                     {"good_read_grn_led_time", "Good Read Grn Led Time", "Good Read"},
                                     {"good_read_red_led_off", "Good Read Red Led Off", "Good Read"},
                                     {"good_read_grn_led_off", "Good Read Grn Led Off", "Good Read"},
                                     {"good_read_relay_time", "Good Read Relay Time", "Good Read"},
                                     {"no_relay_for_good_read", "No Relay for Good Read", "Good Read"},
                                     {"good_read_spkr_on_time", "Good Read Spkr On Time", "Good Read"},
                                     {"no_spkr_for_good_read", "No Spkr for Good Read", "Good Read"},
                                     {"set_reader_address", "Set Reader Address", "Address and Terminator"},
                                     {"c_r_terminator_on", "C/R Terminator On", "Address and Terminator"},
                                     {"c_r_terminator_off", "C/R Terminator Off", "Address and Terminator"},
                                     {"7_bits_even", "7 Bits Even", "Data Format and Speed of the Reader"},
                                     {"7_bits_odd", "7 Bits Odd", "Data Format and Speed of the Reader"},
                                     {"8_bits_np", "8 Bits NP", "Data Format and Speed of the Reader"},
                                     {"1200_baud", "1200 Baud", "Data Format and Speed of the Reader"},
                                     {"2400_baud", "2400 Baud", "Data Format and Speed of the Reader"},
                                     {"4800_baud", "4800 Baud", "Data Format and Speed of the Reader"},
                                     {"9600_baud", "9600 Baud", "Data Format and Speed of the Reader"},
                                     {"19200_baud", "19200 Baud", "Data Format and Speed of the Reader"},
                                 }};

/// Here captions come more than once, "Set" above all: the frame says what is set.
const std::vector<SetupScreenTexts> framed_screens{
    {"orinparam",
     ScreenCode::orinparam,
     {
         {"set_general", "Set", "General"},
         {"rs232_logging_0", "On", "RS232 Logging (Orin)"},
         {"rs232_logging_1", "Off", "RS232 Logging (Orin)"},
         {"set_rs232_logging", "Set", "RS232 Logging (Orin)"},
         {"bad_logging_0", "On", "Bad Logging (Orinta)"},
         {"bad_logging_1", "Off", "Bad Logging (Orinta)"},
         {"set_bad_logging", "Set", "Bad Logging (Orinta)"},
         {"orin_mode_0", "Vell Mode", "Set Mode"},
         {"orin_mode_1", "Orin Mode", "Set Mode"},
         {"orin_mode_2", "Orinta Mode", "Set Mode"},
         {"orin_mode_3", "Accum Mode", "Set Mode"},
         {"set_mode", "Set Mode", "Set Mode"},
         {"set_password", "Set Password", "Set/Change Password"},
         {"set_date_time", "Set Date/Time", "Date/Time"},
         {"read_date_time", "Read Date/Time", "Date/Time"},
     }},
    {"keshsetup",
     ScreenCode::keshsetup,
     {
         {"ferro_time_stamping_0", "Time Stamping On", "Ferro Kesh General"},
         {"ferro_time_stamping_1", "Time Stamping Off", "Ferro Kesh General"},
         {"set_ferro_kesh_general", "Set", "Ferro Kesh General"},
         {"glint_time_stamping_0", "Time Stamping On", "Glint Kesh General"},
         {"glint_time_stamping_1", "Time Stamping Off", "Glint Kesh General"},
         {"id_1_on", "ID 1 On", "Glint Kesh General"},
         {"id_2_on", "ID 2 On", "Glint Kesh General"},
         {"set_glint_kesh_general", "Set", "Glint Kesh General"},
         {"kesh_rs232_logging_0", "RS232 Logging On", "RS232 Logging"},
         {"kesh_rs232_logging_1", "RS232 Logging Off", "RS232 Logging"},
         {"set_kesh_rs232_logging", "Set", "RS232 Logging"},
         {"duplicate_read_0", "Duplicate Read On", "Duplicate Read"},
         {"duplicate_read_1", "Duplicate Read Off", "Duplicate Read"},
         {"set_duplicate_read", "Set", "Duplicate Read"},
         {"comma_delimited_0", "Comma Delimited On", "Comma Delimited"},
         {"comma_delimited_1", "Comma Delimited Off", "Comma Delimited"},
         {"set_comma_delimited", "Set", "Comma Delimited"},
         {"kesh_mode_0", "Vell", "Mode"},
         {"kesh_mode_1", "Kesh", "Mode"},
         {"set_kesh_mode", "Set", "Mode"},
         {"set_ids", "Set", "ID 1 / ID 2"},
         {"read_ids", "Read", "ID 1 / ID 2"},
         {"set_date_time", "Set Date/Time", "Date/Time"},
         {"read_date_time", "Read Date/Time", "Date/Time"},
     }},
    {"quorsetup",
     ScreenCode::quorsetup,
     {
         {"logging_on", "Logging On", "Quor General"},
         {"print_on", "Print On", "Quor General"},
         {"set_quor_general", "Set", "Quor General"},
         {"set_quor_ages", "Set", "Quor Age Settings"},
         {"set_date_time", "Set Date/Time", "Date/Time"},
         {"read_date_time", "Read Date/Time", "Date/Time"},
     }},
    {"symbology",
     ScreenCode::symbology,
     {
         {"code_39", "Code 39", "Barcode"},
         {"i_2_of_5", "I 2 of 5", "Barcode"},
         {"2_of_5", "2 of 5", "Barcode"},
         {"upca", "Upca", "Barcode"},
         {"ean13", "Ean13", "Barcode"},
         {"code128", "Code128", "Barcode"},
         {"codabar", "Codabar", "Barcode"},
         {"set_barcodes", "Set", "Barcode"},
         {"magstripe_tracks_0", "Track 2", "Magstripe Tracks"},
         {"magstripe_tracks_1", "Track 1", "Magstripe Tracks"},
         {"magstripe_tracks_2", "Tracks 1/2", "Magstripe Tracks"},
         {"set_magstripe_tracks", "Set", "Magstripe Tracks"},
         {"track_1_start_stop", "Track 1 Start/Stop", "Magstripe Options"},
         {"track_1_t2_char_set", "Track 1 T2 Char Set", "Magstripe Options"},
         {"track_2_start_stop", "Track 2 Start/Stop", "Magstripe Options"},
         {"track_2_c_start", "Track 2 \"C\" Start", "Magstripe Options"},
         {"xmit_t2_first", "Xmit T2 First", "Magstripe Options"},
         {"set_magstripe_options", "Set", "Magstripe Options"},
     }},
    {"keshutil",
     ScreenCode::keshutil,
     {
         {"upload", "Upload", "Log"},
         {"clear", "Clear", "Log"},
     }},
};

/// The title of the nearest frame that shows one.
std::string frame_of(const QWidget& control) {
  for (const QWidget* widget = control.parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
    const auto* const frame = qobject_cast<const QGroupBox*>(widget);
    if (frame != nullptr && !frame->title().isEmpty()) {
      return frame->title().toStdString();
    }
  }
  return {};
}

void expect_controls(const SetupScreenTexts& screen) {
  ScreenBench bench(screen.code);
  EXPECT_EQ(bench.screen().objectName().toStdString(), screen.name);
  for (const Control& expected : screen.controls) {
    SCOPED_TRACE(expected.object_name);
    const auto& control = bench.control<QAbstractButton>(expected.object_name);
    EXPECT_EQ(control.text().toStdString(), expected.caption);
    EXPECT_EQ(frame_of(control), expected.frame);
  }
  const auto buttons = bench.screen().findChildren<QAbstractButton*>();
  EXPECT_EQ(static_cast<std::size_t>(buttons.size()), screen.controls.size()) << "one is not in the table";
}

class FramedScreen : public testing::TestWithParam<SetupScreenTexts> {};

TEST_P(FramedScreen, has_every_caption_on_its_own_control_in_its_own_frame) {
  expect_controls(GetParam());
}

TEST_P(FramedScreen, tells_assistive_clients_the_frame_of_each_button) {
  const SetupScreenTexts& screen = GetParam();
  ScreenBench bench(screen.code);
  for (const Control& expected : screen.controls) {
    const auto& control = bench.control<QAbstractButton>(expected.object_name);
    if (qobject_cast<const QPushButton*>(&control) != nullptr) {
      EXPECT_EQ(control.accessibleDescription().toStdString(), expected.frame) << expected.object_name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(setup, FramedScreen, testing::ValuesIn(framed_screens),
                         [](const auto& test) { return test.param.name; });

TEST(vellsetup, has_every_caption_on_its_own_button_in_its_own_frame) {
  expect_controls(vellsetup);
}

}  // namespace
