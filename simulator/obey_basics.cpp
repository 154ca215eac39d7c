#include "simulator/command.h"
#include "simulator/wire.h"

namespace readersim {
namespace {

Verdict light(Lamp& lamp, Lamp::State state, const Command& row, std::string_view argument, TimePoint now) {
  const int seconds = number_in(argument);
  lamp.light(state, seconds, now);
  return done(std::string{row.meaning} + (seconds == 0 ? "" : " for " + std::to_string(seconds) + " s"));
}

}  // namespace

Verdict put_value(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.settings.set(row.setting, row.value);
  return done(row.meaning);
}

Verdict put_amount(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  const int value = number_in(argument);
  if (value < row.low || value > row.high) {
    return {};
  }
  reader.settings.set(row.setting, std::to_string(value));
  return done(std::string{row.meaning} + " " + std::to_string(value));
}

Verdict put_text(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  reader.settings.set(row.setting, argument);
  return done(std::string{row.meaning} + " \"" + std::string{argument} + '"');
}

Verdict identify(Reader& reader, const Command&, std::string_view, TimePoint) {
  return {.kind = Verdict::Kind::data, .data = reader.identification, .meaning = "identification"};
}

Verdict reset_reader(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reset(reader);
  return done(row.meaning);
}

Verdict set_lamp(Reader& reader, const Command& row, std::string_view argument, TimePoint now) {
  return light(reader.*row.lamp, row.state, row, argument, now);
}

Verdict close_relay(Reader& reader, const Command& row, std::string_view argument, TimePoint now) {
  ++reader.relay_operations;
  return light(reader.relay, Lamp::State::on, row, argument, now);
}

Verdict sound(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  ++reader.sounder_operations;
  reader.last_sound = number_in(argument);
  return done(std::string{row.meaning} + " for " + std::to_string(reader.last_sound * 10) + " ms");
}

Verdict set_mode(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  if (traits(reader.family).modes.find(argument[0]) == std::string_view::npos) {
    return {};
  }
  reader.operating_mode = argument[0];
  return done(std::string{mode_name(argument[0])} + " mode");
}

Verdict keep_mode(Reader&, const Command& row, std::string_view, TimePoint) {
  // The host sends the bare bar when no mode was chosen, and is told that all went well.
  return done(row.meaning);
}

Verdict protocol_on(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.protocol_mode = true;
  return done(row.meaning);
}

Verdict protocol_off(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.protocol_mode = false;
  return done(row.meaning);
}

Verdict set_address(Reader& reader, const Command& row, std::string_view argument, TimePoint) {
  const int address = number_in(argument);
  if (address > highest_address) {
    return {};
  }
  reader.address = address;
  return done(std::string{row.meaning} + " " + std::to_string(address));
}

Verdict set_data_format(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  switch (argument[0]) {
    case 'E':
      reader.format.data = DataFormat::seven_even;
      return done("7 bits, even parity");
    case 'O':
      reader.format.data = DataFormat::seven_odd;
      return done("7 bits, odd parity");
    case 'N':
      reader.format.data = DataFormat::eight_none;
      return done("8 bits, no parity");
    default:
      return {};
  }
}

Verdict set_baud(Reader& reader, const Command&, std::string_view argument, TimePoint) {
  if (argument[0] < '3' || argument[0] > '7') {
    return {};
  }
  reader.format.baud = baud_rates.at(static_cast<std::size_t>(argument[0] - '3'));
  return done(std::to_string(reader.format.baud) + " baud");
}

Verdict sense_off(Reader& reader, const Command& row, std::string_view, TimePoint) {
  reader.settings.set(Setting::sense_1, "off");
  reader.settings.set(Setting::sense_2, "off");
  return done(row.meaning);
}

Verdict set_clock(Reader& reader, const Command& row, std::string_view argument, TimePoint now) {
  if (!reader.clock.set(argument, now)) {
    return {};
  }
  return done(row.meaning);
}

Verdict read_clock(Reader& reader, const Command& row, std::string_view, TimePoint now) {
  return {.kind = Verdict::Kind::data, .data = reader.clock.stamp(now), .meaning = std::string{row.meaning}};
}

}  // namespace readersim
