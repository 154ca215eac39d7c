#pragma once

#include "simulator/verdict.h"

#include <climits>
#include <span>
#include <string_view>

namespace readersim {

struct Command;
/// Acts on a command whose letters and argument fit its row.
using Handler = Verdict (*)(Reader&, const Command&, std::string_view argument, TimePoint now);

/// One row of the readers' vocabulary.
struct Command {
  bool introduced;            ///< begins with the command introducer NUL
  std::string_view letters;   ///< without the introducer
  std::string_view argument;  ///< what follows: '#' a digit, 'b' a 0 or 1, '.' any character, '*' any rest
  Families families;          ///< who has it
  Handler handler;
  std::string_view meaning;  ///< for people
  Setting setting{};         ///< for put_value and put_amount
  std::string_view value{};  ///< for put_value
  int low = 0;               ///< for put_amount: the least and greatest value the reader takes
  int high = INT_MAX;
  Lamp Reader::*lamp = nullptr;  ///< for set_lamp
  Lamp::State state{};
};

/// Every command of every family.
[[nodiscard]] std::span<const Command> vocabulary();
/// Whether the text has the form that the pattern asks for.
[[nodiscard]] bool fits(std::string_view text, std::string_view pattern);
/// The leading digits of the text as a number; 0 when there are none.
[[nodiscard]] int number_in(std::string_view text);

// The handlers, in the order of the vocabulary's groups.
[[nodiscard]] Verdict done(std::string_view meaning);
Verdict put_value(Reader&, const Command&, std::string_view, TimePoint);
Verdict put_amount(Reader&, const Command&, std::string_view, TimePoint);
Verdict put_text(Reader&, const Command&, std::string_view, TimePoint);
Verdict identify(Reader&, const Command&, std::string_view, TimePoint);
Verdict reset_reader(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_lamp(Reader&, const Command&, std::string_view, TimePoint);
Verdict close_relay(Reader&, const Command&, std::string_view, TimePoint);
Verdict sound(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_mode(Reader&, const Command&, std::string_view, TimePoint);
Verdict keep_mode(Reader&, const Command&, std::string_view, TimePoint);
Verdict protocol_on(Reader&, const Command&, std::string_view, TimePoint);
Verdict protocol_off(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_address(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_data_format(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_baud(Reader&, const Command&, std::string_view, TimePoint);
Verdict sense_off(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_clock(Reader&, const Command&, std::string_view, TimePoint);
Verdict read_clock(Reader&, const Command&, std::string_view, TimePoint);
Verdict set_record_length(Reader&, const Command&, std::string_view, TimePoint);
Verdict put_age(Reader&, const Command&, std::string_view, TimePoint);
Verdict add_entry(Reader&, const Command&, std::string_view, TimePoint);
Verdict add_entry_unanswered(Reader&, const Command&, std::string_view, TimePoint);
Verdict add_schedule_day(Reader&, const Command&, std::string_view, TimePoint);
Verdict add_associated(Reader&, const Command&, std::string_view, TimePoint);
Verdict rewind_list(Reader&, const Command&, std::string_view, TimePoint);
Verdict next_list_entry(Reader&, const Command&, std::string_view, TimePoint);
Verdict clear_list(Reader&, const Command&, std::string_view, TimePoint);
Verdict rewind_log(Reader&, const Command&, std::string_view, TimePoint);
Verdict next_log_record(Reader&, const Command&, std::string_view, TimePoint);
Verdict clear_log(Reader&, const Command&, std::string_view, TimePoint);
Verdict poll(Reader&, const Command&, std::string_view, TimePoint);

}  // namespace readersim
