#include "config/golden.h"
#include "support/bytes.h"

namespace {

using golden::Golden;
using golden::Row;

/// A button of the screen that sends one command, the box beside it filled.
Row vell(const char* name, const char* button, std::string payload, const char* box = "",
         const char* text = "") {
  Row row{.name = name, .screen = ScreenCode::vellsetup, .button = button, .payloads = {std::move(payload)}};
  if (*box != '\0') {
    row.boxes = {{box, text}};
  }
  return row;
}

const std::vector<Row> rows{
    vell("sense_1_auto", "sense_1_auto", "\0DA1"_bytes),
    vell("sense_2_auto", "sense_2_auto", "\0DA2"_bytes),
    vell("sense_inputs_off", "sense_inputs_off", "\0DA0"_bytes),
    vell("sense_delay_of_7", "sense_input_delay_time", "\0D07"_bytes, "Text10", "7"),
    vell("sense_delay_of_42", "sense_input_delay_time", "\0D42"_bytes, "Text10", "42"),
    vell("sense_delay_empty", "sense_input_delay_time", "\0D00"_bytes),
    vell("keyboard_beep_on", "keyboard_enable_beep", "\0KSE"_bytes),
    vell("keyboard_beep_off", "keyboard_disable_beep", "\0KSD"_bytes),
    vell("keyboard_prefix_asterisk", "keyboard_prefix", "\0KP042"_bytes, "Text11", "*"),
    vell("keyboard_prefix_tilde", "keyboard_prefix", "\0KP126"_bytes, "Text11", "~"),
    vell("power_up_red_on", "power_up_red_led_on", "\0LRO"_bytes),
    vell("power_up_red_off", "power_up_red_led_off", "\0LRF"_bytes),
    vell("power_up_green_on", "power_up_grn_led_on", "\0LGO"_bytes),
    vell("power_up_green_off", "power_up_grn_led_off", "\0LGF"_bytes),
    vell("good_read_red_time", "good_read_red_led_time", "\0LRE03"_bytes, "Text12", "3"),
    vell("good_read_red_time_empty", "good_read_red_led_time", "\0LRE00"_bytes),
    vell("good_read_green_time", "good_read_grn_led_time", "\0LGE15"_bytes, "Text13", "15"),
    vell("good_read_green_time_empty", "good_read_grn_led_time", "\0LGE00"_bytes),
    vell("good_read_red_off", "good_read_red_led_off", "\0LRD"_bytes),
    vell("good_read_green_off", "good_read_grn_led_off", "\0LGD"_bytes),
    vell("good_read_relay_time", "good_read_relay_time", "\0RTE99"_bytes, "Text14", "99"),
    vell("good_read_relay_time_empty", "good_read_relay_time", "\0RTE00"_bytes),
    vell("good_read_relay_off", "no_relay_for_good_read", "\0RTD"_bytes),
    vell("good_read_speaker_time_at_its_limit", "good_read_spkr_on_time", "\0STE49"_bytes, "Text17", "49"),
    vell("good_read_speaker_time_empty", "good_read_spkr_on_time", "\0STE00"_bytes),
    vell("good_read_speaker_off", "no_spkr_for_good_read", "\0STD"_bytes),
    vell("reader_address_5", "set_reader_address", "\0IA005"_bytes, "Text18", "5"),
    vell("reader_address_42", "set_reader_address", "\0IA042"_bytes, "Text18", "42"),
    vell("reader_address_at_its_limit", "set_reader_address", "\0IA126"_bytes, "Text18", "126"),
    vell("reader_address_empty", "set_reader_address", "\0IA000"_bytes),
    vell("reader_address_with_a_letter", "set_reader_address", "\0IA01a"_bytes, "Text18", "1a"),
    vell("terminator_on", "c_r_terminator_on", "\0ICE"_bytes),
    vell("terminator_off", "c_r_terminator_off", "\0ICD"_bytes),
    vell("seven_bits_even", "7_bits_even", "\0IBE"_bytes),
    vell("seven_bits_odd", "7_bits_odd", "\0IBO"_bytes),
    vell("eight_bits", "8_bits_np", "\0IBN"_bytes),
    vell("speed_1200", "1200_baud", "\0IB3"_bytes),
    vell("speed_2400", "2400_baud", "\0IB4"_bytes),
    vell("speed_4800", "4800_baud", "\0IB5"_bytes),
    vell("speed_9600", "9600_baud", "\0IB6"_bytes),
    vell("speed_19200", "19200_baud", "\0IB7"_bytes),
};

INSTANTIATE_TEST_SUITE_P(vellsetup, Golden, testing::ValuesIn(rows), golden::name_of);

}  // namespace
