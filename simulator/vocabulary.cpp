#include "simulator/command.h"

#include <array>

namespace readersim {
namespace {

constexpr Command nul(std::string_view letters, Families families, Setting setting, std::string_view value,
                      std::string_view meaning) {
  return {true, letters, "", families, put_value, meaning, setting, value};
}

constexpr Command nul_amount(std::string_view letters, std::string_view argument, Families families,
                             Setting setting, int low, int high, std::string_view meaning) {
  return {true, letters, argument, families, put_amount, meaning, setting, {}, low, high};
}

constexpr Command nul_action(std::string_view letters, std::string_view argument, Handler handler,
                             std::string_view meaning) {
  return {true, letters, argument, every_family, handler, meaning};
}

constexpr Command plain(std::string_view letters, std::string_view argument, Families families,
                        Handler handler, std::string_view meaning) {
  return {false, letters, argument, families, handler, meaning};
}

constexpr Command lamp(std::string_view letters, Lamp Reader::*which, Lamp::State state,
                       std::string_view meaning) {
  Command row{false, letters, "##", every_family, set_lamp, meaning};
  row.lamp = which;
  row.state = state;
  return row;
}

constexpr Command value(std::string_view letters, Families families, Setting setting, std::string_view value,
                        std::string_view meaning) {
  return {false, letters, "", families, put_value, meaning, setting, value};
}

constexpr Command amount(std::string_view letters, std::string_view argument, Families families,
                         Setting setting, int low, int high, std::string_view meaning) {
  return {false, letters, argument, families, put_amount, meaning, setting, {}, low, high};
}

constexpr std::array commands{
    // Parameters that most readers have.
    nul("DA1", sense_families, Setting::sense_1, "auto", "sense input 1 automatic"),
    nul("DA2", sense_families, Setting::sense_2, "auto", "sense input 2 automatic"),
    Command{true, "DA0", "", sense_families, sense_off, "sense inputs off"},
    nul_amount("D", "##", sense_families, Setting::sense_delay, 0, 99, "sense input delay"),
    nul("KSE", keyboard_families, Setting::keyboard_beep, "on", "keyboard beep on"),
    nul("KSD", keyboard_families, Setting::keyboard_beep, "off", "keyboard beep off"),
    nul_amount("KP", "###", keyboard_families, Setting::keyboard_prefix, 0, 255, "keyboard prefix"),
    nul("LRO", every_family, Setting::power_up_red, "on", "red LED on at power up"),
    nul("LRF", every_family, Setting::power_up_red, "off", "red LED off at power up"),
    nul("LGO", every_family, Setting::power_up_green, "on", "green LED on at power up"),
    nul("LGF", every_family, Setting::power_up_green, "off", "green LED off at power up"),
    nul_amount("LRE", "##", every_family, Setting::good_read_red, 0, 99, "red LED time for a good read"),
    nul_amount("LGE", "##", every_family, Setting::good_read_green, 0, 99, "green LED time for a good read"),
    nul("LRD", every_family, Setting::good_read_red, "off", "no red LED for a good read"),
    nul("LGD", every_family, Setting::good_read_green, "off", "no green LED for a good read"),
    nul_amount("RTE", "##", relay_families, Setting::good_read_relay, 0, 99, "relay time for a good read"),
    nul("RTD", relay_families, Setting::good_read_relay, "off", "no relay for a good read"),
    nul_amount("STE", "##", every_family, Setting::good_read_speaker, 0, 49, "speaker time for a good read"),
    nul("STD", every_family, Setting::good_read_speaker, "off", "no speaker for a good read"),
    nul_action("IA", "###", set_address, "reader address"),
    nul("ICE", every_family, Setting::cr_terminator, "on", "C/R terminator on"),
    nul("ICD", every_family, Setting::cr_terminator, "off", "C/R terminator off"),
    nul_action("IB", "#", set_baud, "baud rate"),
    nul_action("IB", ".", set_data_format, "data format"),
    nul_action("ITP", "", protocol_on, "protocol mode on"),
    nul_action("ITN", "", protocol_off, "protocol mode off"),
    nul_action("U", "", reset_reader, "reset"),

    // Symbologies, letter by letter, and the magstripe tracks.
    nul("AO", every_family, Setting::code_39, "on", "Code 39 on"),
    nul("AF", every_family, Setting::code_39, "off", "Code 39 off"),
    nul("HO", every_family, Setting::i_2_of_5, "on", "I 2 of 5 on"),
    nul("HF", every_family, Setting::i_2_of_5, "off", "I 2 of 5 off"),
    nul("GO", every_family, Setting::two_of_5, "on", "2 of 5 on"),
    nul("GF", every_family, Setting::two_of_5, "off", "2 of 5 off"),
    nul("NO", every_family, Setting::upca, "on", "Upca on"),
    nul("NF", every_family, Setting::upca, "off", "Upca off"),
    nul("EO", every_family, Setting::ean13, "on", "Ean13 on"),
    nul("EF", every_family, Setting::ean13, "off", "Ean13 off"),
    nul("BO", every_family, Setting::code_128, "on", "Code128 on"),
    nul("BF", every_family, Setting::code_128, "off", "Code128 off"),
    nul("CO", every_family, Setting::codabar, "on", "Codabar on"),
    nul("CF", every_family, Setting::codabar, "off", "Codabar off"),
    nul("M1O", every_family, Setting::track_1, "on", "track 1 on"),
    nul("M1F", every_family, Setting::track_1, "off", "track 1 off"),
    nul("M2O", every_family, Setting::track_2, "on", "track 2 on"),
    nul("M2F", every_family, Setting::track_2, "off", "track 2 off"),
    nul("M1SE", every_family, Setting::track_1_start_stop, "on", "track 1 start/stop sent"),
    nul("M1SD", every_family, Setting::track_1_start_stop, "off", "track 1 start/stop not sent"),
    nul("M1C1", every_family, Setting::track_1_characters, "1", "track 1 with its own character set"),
    nul("M1C2", every_family, Setting::track_1_characters, "2", "track 1 with track 2's character set"),
    nul("M2SE", every_family, Setting::track_2_start_stop, "on", "track 2 start/stop sent"),
    nul("M2SD", every_family, Setting::track_2_start_stop, "off", "track 2 start/stop not sent"),
    nul("M2CO", every_family, Setting::track_2_c_start, "on", "track 2 C start on"),
    nul("M2CF", every_family, Setting::track_2_c_start, "off", "track 2 C start off"),
    nul("M21", every_family, Setting::first_track_sent, "2", "track 2 sent first"),
    nul("M11", every_family, Setting::first_track_sent, "1", "track 1 sent first"),

    // Diagnostics.
    plain("V", "", every_family, identify, "identification"),
    lamp("}", &Reader::red, Lamp::State::on, "red LED on"),
    lamp("{", &Reader::red, Lamp::State::off, "red LED off"),
    lamp(")", &Reader::red, Lamp::State::blinking, "red LED blinks"),
    lamp("]", &Reader::green, Lamp::State::on, "green LED on"),
    lamp("[", &Reader::green, Lamp::State::off, "green LED off"),
    lamp(">", &Reader::green, Lamp::State::blinking, "green LED blinks"),
    plain("!", "##", relay_families, close_relay, "relay"),
    plain("&", "##", every_family, sound, "speaker"),
    Command{false, "D", "*", display_families, put_text, "display", Setting::display},
    Command{false, "T", "####", display_families, put_text, "clock display", Setting::clock_display},
    plain("|", "#", every_family, set_mode, "operating mode"),
    plain("|", "", every_family, keep_mode, "operating mode, none named"),
    plain("?", "", every_family, poll, "poll"),

    // The clock.
    plain("+", "#############", clock_families, set_clock, "set the clock"),
    plain("t", "", clock_families, read_clock, "read the clock"),

    // Stand-alone and collecting readers. The backslash is one command of three widths.
    plain("\\", "##", access_families, set_record_length, "record length"),
    plain("\\", "###b", ferro_only, set_record_length, "record length, time stamp"),
    plain("\\", "###bbb", glint_only, set_record_length, "record length, time stamp, identifiers"),
    amount("\"", "##", access_families, Setting::relay_time, 1, 99, "relay time"),
    amount("'", "##", access_families, Setting::red_led_time, 1, 15, "red LED time"),
    amount("r", "#####", ferro_only, Setting::max_records, 0, 99999, "max records"),
    value("s1", rs232_logging_families, Setting::rs232_logging, "on", "RS232 logging on"),
    value("s0", rs232_logging_families, Setting::rs232_logging, "off", "RS232 logging off"),
    value(":1", orinta_only, Setting::bad_logging, "on", "bad logging on"),
    value(":0", orinta_only, Setting::bad_logging, "off", "bad logging off"),
    value("d1", kesh_families, Setting::duplicate_suppression, "on", "duplicate suppression on"),
    value("d0", kesh_families, Setting::duplicate_suppression, "off", "duplicate suppression off"),
    value("y1", kesh_families, Setting::comma_delimited, "on", "comma delimited on"),
    value("y0", kesh_families, Setting::comma_delimited, "off", "comma delimited off"),
    Command{true, "1", ".....", glint_only, put_text, "identifier 1", Setting::id_1},
    Command{true, "2", ".....", glint_only, put_text, "identifier 2", Setting::id_2},
    nul("+1", quor_only, Setting::logging, "on", "logging on"),
    nul("+0", quor_only, Setting::logging, "off", "logging off"),
    nul("=1", quor_only, Setting::printing, "on", "printing on"),
    nul("=0", quor_only, Setting::printing, "off", "printing off"),
    Command{true, "(", "##", quor_only, put_age, "age"},

    // Transfers.
    plain("AC", "*", access_families, add_entry, "access entry"),
    plain("AN", "*", access_families, add_entry_unanswered, "access entry for all readers"),
    plain("SA", "*", access_families, add_schedule_day, "schedule day"),
    plain("SS", "*", access_families, add_associated, "associated schedule"),
    plain("ur", "", access_families, rewind_list, "access list from its start"),
    plain("u", "", access_families, next_list_entry, "next access entry"),
    plain("cd", "", access_families, clear_list, "clear the access list"),
    plain("lr", "", record_families, rewind_log, "log from its start"),
    plain("l", "", record_families, next_log_record, "next log record"),
    plain("cl", "", record_families, clear_log, "clear the log"),
};

}  // namespace

std::span<const Command> vocabulary() {
  return commands;
}

}  // namespace readersim
