// The main job, the whole way: a technician reaches a reader on a plain line, then one on a network, then
// talks to it by hand.

#include "support/whole_bench.h"

#include <QAccessible>
#include <QLineEdit>
#include <QTimer>

namespace {

readersim::Options network() {
  return readersim::parse_options({"--network", "0-126", "--no-console"});
}

QString text_of(QWidget* widget) {
  QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(widget);
  QAccessibleTextInterface* const text = interface->textInterface();
  return text->text(0, text->characterCount());
}

}  // namespace

TEST(first_light, reads_the_identification_of_a_reader_on_a_plain_line) {
  WholeBench bench(readersim::Family::orin);
  bench.open(ScreenCode::diag);
  bench.click("Reader Identification");
  EXPECT_EQ(bench.find<QLineEdit>("Text4")->text().toStdString(), bench.readers.value(0, "identification"));
}

TEST(first_light, reaches_the_reader_of_the_address_entered_on_a_network) {
  WholeBench bench(network());
  for (const int address : {5, 0, 126}) {
    bench.type_network(std::to_string(address).c_str());
    bench.open(ScreenCode::diag);
    bench.click("Reader Identification");
    EXPECT_EQ(bench.find<QLineEdit>("Text4")->text().toStdString(),
              bench.readers.value(address, "identification"));
  }
}

TEST(first_light, a_reader_switched_to_protocol_mode_answers_on_the_network_alone) {
  WholeBench bench(readersim::Family::orin);
  bench.open(ScreenCode::diag);
  bench.click("Protocol Mode");
  ASSERT_TRUE(wait_until([&bench] { return bench.readers.value(0, "protocol") == "on"; }));
  bench.dialogs.expect_message("Reader is not Connected");
  bench.click("Reader Identification");
  bench.type_network("0");
  bench.open(ScreenCode::diag);
  bench.click("Reader Identification");
  EXPECT_FALSE(bench.find<QLineEdit>("Text4")->text().isEmpty());
}

TEST(first_light, leds_relay_and_speaker_are_acknowledged_on_a_network) {
  WholeBench bench(network());
  bench.type_network("1");
  bench.open(ScreenCode::diag);
  for (const char* caption : {"Red Led On", "Red Led Off", "Green Led On", "Green Led Off", "Test Relay",
                              "Test Speaker", "Blink Red Led", "Blink Green Led"}) {
    bench.click(caption);  // a missing acknowledge would show a box that nobody expects
    EXPECT_TRUE(bench.program.services().link.command_accepted()) << caption;
  }
}

TEST(first_light, talks_to_the_reader_by_hand) {
  WholeBench bench(readersim::Family::orin);
  bench.open(ScreenCode::term);
  auto* const typing = bench.find("Text7");
  QTest::keyClicks(typing, QStringLiteral("V"));
  QTest::keyClick(typing, Qt::Key_Return);
  auto* const received = bench.find("Text1");
  const QString identification = QString::fromStdString(bench.readers.value(0, "identification"));
  EXPECT_TRUE(wait_until([&] { return text_of(received) == identification + u'\n'; }))
      << text_of(received).toStdString();
}

TEST(first_light, a_close_in_the_middle_of_a_pause_ends_it_at_once_with_the_port_closed) {
  WholeBench bench(network());
  bench.type_network("5");
  bench.open(ScreenCode::diag);
  QTimer::singleShot(50, &bench.window, [&bench] { bench.window.close(); });
  EXPECT_LT(time_of([&bench] { bench.click("Test Relay"); }), std::chrono::milliseconds(190));
  EXPECT_FALSE(bench.program.services().link.comopen());
}

TEST(first_light, a_hang_up_is_told_at_the_next_click_and_a_click_on_the_port_option_comes_back) {
  WholeBench bench(readersim::Family::orin);
  bench.readers.hang_up();
  ASSERT_TRUE(wait_until([&bench] { return !bench.program.services().link.comopen(); }));
  bench.open(ScreenCode::diag);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click("Red Led On");
  bench.readers.replug();
  const ScopedVariable new_path{"TARVOS_COM1", bench.readers.path()};
  bench.open(ScreenCode::com);
  bench.click(bench.find("comm_port_0"));
  EXPECT_TRUE(bench.program.services().link.comopen());
  bench.open(ScreenCode::diag);
  bench.click("Reader Identification");
  EXPECT_FALSE(bench.find<QLineEdit>("Text4")->text().isEmpty());
}
