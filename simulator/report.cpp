#include "simulator/report.h"

#include <array>
#include <cstdio>

namespace readersim {
namespace {

void line(std::string& text, std::string_view name, std::string_view value) {
  text.append(name).append(": ").append(value).append("\n");
}

void amount(std::string& text, std::string_view name, std::size_t value) {
  line(text, name, std::to_string(value));
}

std::string date_and_time(const Reader& reader, TimePoint now) {
  constexpr std::array days{"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
  const Clock::Reading r = reader.clock.read(now);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%02d-%02d-%02d %02d:%02d:%02d %s", r.year, r.month, r.day, r.hour,
                r.minute, r.second, days.at(static_cast<std::size_t>(r.weekday - 1)));
  return text.data();
}

std::size_t used_schedules(const Schedules& schedules) {
  std::size_t used = 0;
  for (int number = 1; number <= 99; ++number) {
    const Schedules::Schedule& each = schedules.at(number);
    bool any = each.associated != 0;
    for (const std::string& day : each.days) {
      any = any || day != "00000000";
    }
    used += any ? 1 : 0;
  }
  return used;
}

}  // namespace

std::string describe(const LineFormat& format) {
  const char* data = " 8N";
  if (format.data != DataFormat::eight_none) {
    data = format.data == DataFormat::seven_even ? " 7E" : " 7O";
  }
  return std::to_string(format.baud) + data;
}

std::string_view describe(Lamp::State state) {
  switch (state) {
    case Lamp::State::on:
      return "on";
    case Lamp::State::blinking:
      return "blinking";
    default:
      return "off";
  }
}

std::string summary(const Seat& seat, TimePoint now) {
  const Reader& reader = seat.reader;
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(),
                "%03d  %-10s  %-8s  %-6s mode  %-8s  red %-8s  green %-8s  relay %s%s", reader.address,
                std::string{traits(reader.family).name}.c_str(), reader.protocol_mode ? "network" : "plain",
                std::string{mode_name(reader.operating_mode)}.c_str(), describe(reader.format).c_str(),
                std::string{describe(reader.red.at(now))}.c_str(),
                std::string{describe(reader.green.at(now))}.c_str(),
                std::string{describe(reader.relay.at(now))}.c_str(), seat.present ? "" : "  (unplugged)");
  return text.data();
}

std::string report(const Seat& seat, TimePoint now) {
  const Reader& reader = seat.reader;
  std::string text;
  line(text, "family", traits(reader.family).name);
  line(text, "address", std::to_string(reader.address));
  line(text, "identification", reader.identification);
  line(text, "present", seat.present ? "on" : "off");
  line(text, "protocol", reader.protocol_mode ? "on" : "off");
  line(text, "mode", mode_name(reader.operating_mode));
  line(text, "line", describe(reader.format));
  if (clock_families.has(reader.family)) {
    line(text, "clock", date_and_time(reader, now));
  }
  line(text, "red", describe(reader.red.at(now)));
  line(text, "green", describe(reader.green.at(now)));
  if (relay_families.has(reader.family)) {
    line(text, "relay", describe(reader.relay.at(now)));
    amount(text, "relay operations", static_cast<std::size_t>(reader.relay_operations));
  }
  amount(text, "speaker soundings", static_cast<std::size_t>(reader.sounder_operations));
  for (const SettingTraits& each : all_settings()) {
    if (each.families.has(reader.family)) {
      line(text, each.name, reader.settings.get(each.setting));
    }
  }
  if (access_families.has(reader.family)) {
    amount(text, "access entries", reader.access.entries().size());
    amount(text, "schedules", used_schedules(reader.schedules));
  }
  if (record_families.has(reader.family)) {
    amount(text, "log records", reader.log.records.size());
  }
  amount(text, "reads waiting for a poll", reader.polls.waiting.size());
  for (const Fault& fault : seat.faults) {
    line(text, "fault", describe(fault));
  }
  return text;
}

}  // namespace readersim
