#include "simulator/reader.h"

namespace readersim {
namespace {

using namespace std::chrono_literals;

constexpr auto for_ever = TimePoint::max();

void light_for(Lamp& lamp, const Settings& settings, Setting time, TimePoint now) {
  if (const int seconds = settings.number(time); seconds > 0) {
    lamp.light(Lamp::State::on, seconds, now);
  }
}

}  // namespace

void Lamp::light(State state, int seconds, TimePoint now) {
  if (seconds == 0) {
    steady_ = state;
    until_ = TimePoint{0};
  } else {
    timed_ = state;
    until_ = now < for_ever - 1s * seconds ? now + 1s * seconds : for_ever;
  }
}

Reader::Reader(Family made_as, int at_address, int serial)
    : family(made_as),
      address(at_address),
      identification(readersim::identification(made_as, serial)),
      operating_mode(traits(made_as).operating_mode),
      settings(made_as) {}

void reset(Reader& reader) {
  const auto power_up = [&](Setting setting) {
    return reader.settings.is_on(setting) ? Lamp::State::on : Lamp::State::off;
  };
  reader.red.light(power_up(Setting::power_up_red), 0, TimePoint{0});
  reader.green.light(power_up(Setting::power_up_green), 0, TimePoint{0});
  reader.relay.light(Lamp::State::off, 0, TimePoint{0});
  reader.settings.set(Setting::display, "");
  reader.settings.set(Setting::clock_display, "");
  reader.next_entry = 0;
  reader.log.next = 0;
  reader.polls.offered = false;
}

void show_good_read(Reader& reader, TimePoint now) {
  light_for(reader.red, reader.settings, Setting::good_read_red, now);
  light_for(reader.green, reader.settings, Setting::good_read_green, now);
  if (relay_families.has(reader.family) && reader.settings.number(Setting::good_read_relay) > 0) {
    light_for(reader.relay, reader.settings, Setting::good_read_relay, now);
    ++reader.relay_operations;
  }
  if (const int hundredths = reader.settings.number(Setting::good_read_speaker); hundredths > 0) {
    reader.last_sound = hundredths;
    ++reader.sounder_operations;
  }
}

void show_bad_read(Reader& reader, TimePoint now) {
  const bool has_time = access_families.has(reader.family);
  reader.red.light(Lamp::State::on, has_time ? reader.settings.number(Setting::red_led_time) : 1, now);
}

void host_acknowledged(Reader& reader) {
  ++reader.polls.acknowledges;
}

void host_moved_on(Reader& reader) {
  PollQueue& polls = reader.polls;
  // Two acknowledges are how the host answers what it could not read: the record stays.
  if (polls.offered && polls.acknowledges == 1 && !polls.waiting.empty()) {
    polls.waiting.pop_front();
    polls.end_due = polls.waiting.empty();
  }
  polls.offered = false;
  polls.acknowledges = 0;
}

}  // namespace readersim
