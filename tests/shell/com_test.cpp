#include "shell/com.h"

#include "shell/text_box.h"
#include "support/window_bench.h"

#include <QAccessible>
#include <QClipboard>
#include <QHelpEvent>
#include <QRadioButton>

namespace {

constexpr const char* no_address = "A Network address has not been set";

void choose(WindowBench& bench, const char* option) {
  bench.click(bench.find<QRadioButton>(option));
}

}  // namespace

TEST(com, defaults_are_the_built_in_ones) {
  WindowBench bench;
  for (const char* option : {"comm_port_0", "baud_rate_3", "data_bits_1", "parity_0", "network_mode_1"}) {
    EXPECT_TRUE(bench.find<QRadioButton>(option)->isChecked()) << option;
  }
  EXPECT_EQ(bench.find<TextBox>("reader_address")->text(), QStringLiteral("0"));
}

TEST(com, even_and_then_seven_bits_reopen_twice_and_give_9600_e_7_1) {
  WindowBench bench;
  choose(bench, "parity_1");
  choose(bench, "data_bits_0");
  EXPECT_EQ(bench.port.opened_with,
            (std::vector<std::string>{"1:9600,N,8,1", "1:9600,E,8,1", "1:9600,E,7,1"}));
}

TEST(com, seven_bits_even_at_2400_gives_2400_e_7_1) {
  WindowBench bench;
  choose(bench, "data_bits_0");
  choose(bench, "parity_1");
  choose(bench, "baud_rate_1");
  EXPECT_EQ(bench.port.opened_with.back(), "1:2400,E,7,1");
}

TEST(com, every_port_and_baud_option_takes_effect_at_once) {
  WindowBench bench;
  for (int index = 4; index >= 0; --index) {
    choose(bench, qPrintable(QStringLiteral("comm_port_%1").arg(index)));
    EXPECT_EQ(bench.port.opened_with.back(), std::to_string(index + 1) + ":9600,N,8,1");
  }
  const std::array<const char*, 5> bauds{"1200", "2400", "4800", "9600", "19200"};
  for (int index = 0; index < 5; ++index) {
    choose(bench, qPrintable(QStringLiteral("baud_rate_%1").arg(index)));
    EXPECT_EQ(bench.port.opened_with.back(),
              std::string("1:") + bauds.at(static_cast<std::size_t>(index)) + ",N,8,1");
  }
  choose(bench, "baud_rate_3");
  choose(bench, "parity_2");
  EXPECT_EQ(bench.port.opened_with.back(), "1:9600,O,8,1");
}

TEST(com, a_port_that_does_not_open_is_told_and_the_next_operation_finds_it_closed) {
  WindowBench bench;
  bench.port.openable = false;
  bench.dialogs.expect_message("Unable to open comm port");
  choose(bench, "comm_port_1");
  EXPECT_FALSE(bench.program.services().link.comopen());
  bench.open(ScreenCode::diag);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click("Red Led On");
}

TEST(com, with_the_first_open_failed_another_port_opens_nothing_and_shows_nothing) {
  WindowBench bench(false);
  bench.port.openable = true;
  choose(bench, "comm_port_2");
  EXPECT_EQ(bench.port.opened_with.size(), 1U);
  EXPECT_FALSE(bench.port.is_open);
}

TEST(com, a_click_on_the_option_already_chosen_reopens_the_port) {
  WindowBench bench;
  bench.port.hang_up();
  choose(bench, "comm_port_0");
  EXPECT_EQ(bench.port.opened_with.size(), 2U);
  EXPECT_TRUE(bench.program.services().link.comopen());
}

TEST(com, an_option_chosen_by_an_assistive_client_acts_like_a_clicked_one) {
  WindowBench bench;
  bench.find<QRadioButton>("comm_port_3")->toggle();
  EXPECT_EQ(bench.port.opened_with.back(), "4:9600,N,8,1");
  EXPECT_EQ(bench.port.opened_with.size(), 2U);
}

TEST(com, left_and_right_move_the_choice_and_act) {
  WindowBench bench;
  auto* const first = bench.find<QRadioButton>("baud_rate_3");
  first->setFocus();
  QTest::keyClick(first, Qt::Key_Right);
  EXPECT_EQ(bench.port.opened_with.back(), "1:19200,N,8,1");
  EXPECT_EQ(bench.window.focusWidget(), bench.find("baud_rate_4"));
  QTest::keyClick(bench.window.focusWidget(), Qt::Key_Left);
  EXPECT_EQ(bench.port.opened_with.back(), "1:9600,N,8,1");
}

TEST(com, network_mode_takes_effect_at_once) {
  WindowBench bench;
  choose(bench, "network_mode_0");
  EXPECT_TRUE(bench.program.services().link.network_mode());
  choose(bench, "network_mode_1");
  EXPECT_FALSE(bench.program.services().link.network_mode());
  EXPECT_EQ(bench.port.opened_with.size(), 1U);
}

TEST(com, the_address_box_takes_digits_only_as_typed) {
  WindowBench bench;
  auto* const box = bench.find<TextBox>("reader_address");
  box->selectAll();
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, QStringLiteral("1a2"));
  EXPECT_EQ(box->text(), QStringLiteral("12"));
  EXPECT_EQ(bench.program.services().settings.reader_address, "12");
}

TEST(com, the_address_box_discards_backspace_but_delete_empties_it) {
  WindowBench bench;
  auto* const box = bench.find<TextBox>("reader_address");
  QTest::keyClick(box, Qt::Key_Backspace);
  EXPECT_EQ(box->text(), QStringLiteral("0"));
  QTest::keyClick(box, Qt::Key_Home);
  QTest::keyClick(box, Qt::Key_Delete);
  EXPECT_EQ(box->text(), QString());
}

TEST(com, pasting_into_the_address_box_is_not_filtered) {
  WindowBench bench;
  auto* const box = bench.find<TextBox>("reader_address");
  QGuiApplication::clipboard()->setText(QStringLiteral("7x"));
  box->selectAll();
  box->paste();
  EXPECT_EQ(box->text(), QStringLiteral("7x"));
}

TEST(com, address_200_stops_every_exchange) {
  WindowBench bench;
  bench.find<TextBox>("reader_address")->setText(QStringLiteral("200"));
  bench.open(ScreenCode::diag);
  bench.dialogs.expect_message(no_address);
  bench.click("Red Led On");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(com, an_empty_address_stops_every_exchange_also_with_network_mode_off) {
  WindowBench bench;
  bench.find<TextBox>("reader_address")->clear();
  bench.open(ScreenCode::diag);
  bench.dialogs.expect_message(no_address);
  bench.click("Red Led On");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(com, pressing_the_chosen_option_through_the_accessibility_bus_or_by_space_reopens_the_port) {
  WindowBench bench;
  auto* const option = bench.find<QRadioButton>("comm_port_0");
  QAccessible::queryAccessibleInterface(option)->actionInterface()->doAction(
      QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.port.opened_with.size() == 2; }));
  QTest::keyClick(option, Qt::Key_Space);
  EXPECT_EQ(bench.port.opened_with.size(), 3U);
}

TEST(com, an_open_port_tells_how_it_is_open_to_eyes_and_to_assistive_clients) {
  WindowBench bench;
  choose(bench, "parity_1");
  auto* const option = bench.find<QRadioButton>("comm_port_0");
  EXPECT_EQ(option->toolTip(), QStringLiteral("/dev/fake1, open at 9600,E,8,1"));
  EXPECT_EQ(option->accessibleDescription(), option->toolTip());
  option->clearFocus();
  bench.port.hang_up();
  option->setFocus();
  EXPECT_EQ(option->toolTip(), QStringLiteral("/dev/fake1"));
}

TEST(com, a_tool_tip_tells_the_device_and_why_it_did_not_open) {
  WindowBench bench;
  auto* const option = bench.find<QRadioButton>("comm_port_1");
  QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), option->mapToGlobal(QPoint(2, 2)));
  QCoreApplication::sendEvent(option, &help);
  EXPECT_EQ(option->toolTip(), QStringLiteral("/dev/fake2"));
  bench.port.openable = false;
  QCoreApplication::sendEvent(option, &help);
  EXPECT_EQ(option->toolTip(), QStringLiteral("/dev/fake2: Permission denied"));
}
