#include "simulator/reader.h"

#include "simulator/verdict.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace std::chrono_literals;
using readersim::all_families;
using readersim::Family;
using readersim::Lamp;
using readersim::Reader;
using readersim::Setting;

TEST(Lamp, stays_as_it_is_told_without_a_time) {
  Lamp lamp;
  EXPECT_EQ(lamp.at(0s), Lamp::State::off);
  lamp.light(Lamp::State::on, 0, 5s);
  EXPECT_EQ(lamp.at(5s), Lamp::State::on);
  EXPECT_EQ(lamp.at(1000h), Lamp::State::on);
}

TEST(Lamp, goes_back_to_what_it_was_when_its_time_is_over) {
  Lamp lamp;
  lamp.light(Lamp::State::blinking, 0, 0s);
  lamp.light(Lamp::State::on, 3, 10s);
  EXPECT_EQ(lamp.at(12s + 999ms), Lamp::State::on);
  EXPECT_EQ(lamp.at(13s), Lamp::State::blinking);
}

TEST(Lamp, a_new_order_ends_the_time_of_the_old_one) {
  Lamp lamp;
  lamp.light(Lamp::State::on, 99, 0s);
  lamp.light(Lamp::State::off, 0, 1s);
  EXPECT_EQ(lamp.at(2s), Lamp::State::off);
  lamp.light(Lamp::State::on, 2, 2s);
  lamp.light(Lamp::State::blinking, 1, 3s);
  EXPECT_EQ(lamp.at(3s), Lamp::State::blinking);
  EXPECT_EQ(lamp.at(4s), Lamp::State::off);
}

TEST(Families, each_have_a_name_an_identification_and_a_mode_of_their_own) {
  std::set<std::string_view> names;
  std::set<std::string> identifications;
  for (const Family family : all_families) {
    const readersim::FamilyTraits& made = readersim::traits(family);
    EXPECT_EQ(made.family, family);
    names.insert(made.name);
    identifications.insert(readersim::identification(family, 7));
    EXPECT_NE(made.modes.find(made.operating_mode), std::string_view::npos) << made.name;
    EXPECT_EQ(readersim::family_named(made.name), family);
    EXPECT_GE(made.record_length, made.least_record);
    EXPECT_LE(made.record_length, made.longest_record);
  }
  EXPECT_EQ(names.size(), 6U);
  EXPECT_EQ(identifications.size(), 6U);
  EXPECT_EQ(readersim::family_named("Karn"), std::nullopt);
  EXPECT_EQ(readersim::family_named(""), std::nullopt);
}

TEST(Families, number_their_readers) {
  EXPECT_EQ(readersim::identification(Family::vell, 0), "VELL READER V3.20 S/N 000000");
  EXPECT_EQ(readersim::identification(Family::vell, 123456), "VELL READER V3.20 S/N 123456");
  EXPECT_EQ(readersim::identification(Family::vell, 9999999), "VELL READER V3.20 S/N 999999");
}

TEST(Modes, have_names) {
  EXPECT_EQ(readersim::mode_name('1'), "Vell");
  EXPECT_EQ(readersim::mode_name('2'), "Kesh");
  EXPECT_EQ(readersim::mode_name('3'), "Orin");
  EXPECT_EQ(readersim::mode_name('4'), "Orinta");
  EXPECT_EQ(readersim::mode_name('5'), "Accum");
  EXPECT_EQ(readersim::mode_name('0'), "?");
  EXPECT_EQ(readersim::mode_name('6'), "?");
}

TEST(Settings, have_each_their_own_name_and_some_family) {
  std::set<std::string_view> names;
  for (const readersim::SettingTraits& each : readersim::all_settings()) {
    names.insert(each.name);
    bool any = false;
    for (const Family family : all_families) {
      any = any || each.families.has(family);
    }
    EXPECT_TRUE(any) << each.name;
    EXPECT_EQ(&readersim::traits(each.setting), &each);
  }
  EXPECT_EQ(names.size(), readersim::setting_count);
}

TEST(Settings, are_what_the_factory_set) {
  for (const Family family : all_families) {
    const readersim::Settings settings{family};
    EXPECT_EQ(settings.number(Setting::record_length),
              static_cast<int>(readersim::traits(family).record_length));
    EXPECT_TRUE(settings.is_on(Setting::track_2));
    EXPECT_FALSE(settings.is_on(Setting::track_1));
    EXPECT_EQ(settings.get(Setting::id_1), "     ");
  }
}

TEST(Settings, read_as_text_switch_and_number) {
  readersim::Settings settings{Family::vell};
  settings.set(Setting::good_read_red, "12");
  EXPECT_EQ(settings.get(Setting::good_read_red), "12");
  EXPECT_EQ(settings.number(Setting::good_read_red), 12);
  EXPECT_FALSE(settings.is_on(Setting::good_read_red));
  settings.set(Setting::good_read_red, "off");
  EXPECT_EQ(settings.number(Setting::good_read_red), 0);
}

TEST(Reader, leaves_the_factory_as_its_family_does) {
  for (const Family family : all_families) {
    const Reader reader{family, 42, 1001};
    EXPECT_EQ(reader.address, 42);
    EXPECT_FALSE(reader.protocol_mode);
    EXPECT_EQ(reader.format, readersim::LineFormat{});
    EXPECT_EQ(reader.operating_mode, readersim::traits(family).operating_mode);
    EXPECT_TRUE(reader.access.entries().empty());
    EXPECT_TRUE(reader.log.records.empty());
  }
}

TEST(Reader, keeps_what_it_holds_over_a_reset_and_starts_its_uploads_anew) {
  Reader reader{Family::orin, 5, 1};
  reader.address = 7;
  reader.format.baud = 1200;
  ASSERT_TRUE(reader.access.put("1", 1));
  reader.log.records = {"one", "two"};
  reader.polls.waiting = {"card"};
  (void)obey(reader, "l", 0s);
  (void)obey(reader, "u", 0s);
  EXPECT_EQ(reader.log.next, 1U);
  EXPECT_EQ(reader.next_entry, 1U);
  reset(reader);
  EXPECT_EQ(reader.log.next, 0U);
  EXPECT_EQ(reader.next_entry, 0U);
  EXPECT_EQ(reader.address, 7);
  EXPECT_EQ(reader.format.baud, 1200);
  EXPECT_EQ(reader.access.entries().size(), 1U);
  EXPECT_EQ(reader.log.records.size(), 2U);
  EXPECT_EQ(reader.polls.waiting.size(), 1U);
}

TEST(Reader, shows_a_good_read_with_what_is_set_and_has) {
  Reader reader{Family::ferro_kesh, 5, 1};  // has no relay
  reader.settings.set(Setting::good_read_relay, "5");
  show_good_read(reader, 0s);
  EXPECT_EQ(reader.relay.at(0s), Lamp::State::off);
  EXPECT_EQ(reader.relay_operations, 0);
  EXPECT_EQ(reader.green.at(0s), Lamp::State::on);
  EXPECT_EQ(reader.last_sound, 20);
}

TEST(Reader, shows_a_bad_read_for_the_red_led_time_or_a_second) {
  Reader orinta{Family::orinta, 5, 1};
  orinta.settings.set(Setting::red_led_time, "4");
  show_bad_read(orinta, 0s);
  EXPECT_EQ(orinta.red.at(3s), Lamp::State::on);
  EXPECT_EQ(orinta.red.at(4s), Lamp::State::off);
  Reader quor{Family::quor, 5, 1};
  show_bad_read(quor, 0s);
  EXPECT_EQ(quor.red.at(999ms), Lamp::State::on);
  EXPECT_EQ(quor.red.at(1s), Lamp::State::off);
}

TEST(PollQueue, is_emptied_by_one_acknowledge_after_an_offer_only) {
  Reader reader{Family::vell, 5, 1};
  reader.protocol_mode = true;
  reader.polls.waiting = {"one"};
  host_acknowledged(reader);
  host_moved_on(reader);
  EXPECT_EQ(reader.polls.waiting.size(), 1U);  // nothing had been offered
  EXPECT_EQ(obey(reader, "?", 0s).data, "one");
  host_acknowledged(reader);
  host_acknowledged(reader);
  host_moved_on(reader);
  EXPECT_EQ(reader.polls.waiting.size(), 1U);
  EXPECT_EQ(obey(reader, "?", 0s).data, "one");
  host_acknowledged(reader);
  host_moved_on(reader);
  EXPECT_TRUE(reader.polls.waiting.empty());
  EXPECT_EQ(obey(reader, "?", 0s).poll_state, '\x04');
  EXPECT_EQ(obey(reader, "?", 0s).poll_state, '\x02');
}

TEST(PollQueue, is_not_there_on_a_plain_line) {
  Reader reader{Family::vell, 5, 1};
  EXPECT_EQ(obey(reader, "?", 0s).kind, readersim::Verdict::Kind::refused);
}

TEST(PollQueue, drops_the_oldest_copy_of_a_stored_record_but_never_the_one_on_offer) {
  Reader reader{Family::quor, 5, 1};
  reader.protocol_mode = true;
  reader.settings.set(Setting::time_stamping, "off");
  const auto draw = [&](int from, int to) {
    for (int card = from; card < to; ++card) {
      EXPECT_TRUE(swipe(reader, std::to_string(card), 0s).accepted);
    }
  };
  draw(0, 50);
  EXPECT_EQ(obey(reader, "?", 0s).data, "0");
  draw(50, 52);
  ASSERT_EQ(reader.polls.waiting.size(), readersim::PollQueue::capacity);
  EXPECT_EQ(reader.polls.waiting[0], "0");
  EXPECT_EQ(reader.polls.waiting[1], "3");
  EXPECT_EQ(reader.polls.waiting.back(), "51");
  EXPECT_EQ(reader.log.records.size(), 52U);
}

}  // namespace
