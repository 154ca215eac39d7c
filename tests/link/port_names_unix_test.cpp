#include "link/port_names.h"
#include "support/pty.h"

#include <QString>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

TEST(port_names, a_variable_names_the_device_of_its_port) {
  const ScopedVariable port_2{"TARVOS_COM2", "/dev/pts/77"};
  EXPECT_EQ(device_of_com_port(2), QStringLiteral("/dev/pts/77"));
}

TEST(port_names, each_port_has_its_own_variable) {
  const ScopedVariable port_1{"TARVOS_COM1", "/dev/one"};
  const ScopedVariable port_5{"TARVOS_COM5", "/dev/five"};
  EXPECT_EQ(device_of_com_port(1), QStringLiteral("/dev/one"));
  EXPECT_EQ(device_of_com_port(5), QStringLiteral("/dev/five"));
}

TEST(port_names, an_empty_variable_takes_the_port_away) {
  const ScopedVariable port_1{"TARVOS_COM1", ""};
  EXPECT_TRUE(device_of_com_port(1).isEmpty());
}

TEST(port_names, without_a_variable_the_system_decides) {
  for (int number = 1; number <= 5; ++number) {
    EXPECT_EQ(device_of_com_port(number), system_device_of_com_port(number));
  }
}

TEST(port_names, the_system_has_no_device_twice_and_none_beyond_its_last) {
  std::vector<QString> devices;
  bool ended = false;
  for (int number = 1; number <= 40; ++number) {
    const QString device = system_device_of_com_port(number);
    EXPECT_FALSE(ended && !device.isEmpty()) << "a gap before Com Port " << number;
    ended = device.isEmpty();
    if (!ended) {
      EXPECT_EQ(std::count(devices.begin(), devices.end(), device), 0);
      devices.push_back(device);
    }
  }
  EXPECT_TRUE(ended);
}

TEST(port_names, devices_stand_by_name_with_numbers_as_numbers) {
  std::array devices{QStringLiteral("/dev/ttyUSB10"), QStringLiteral("/dev/ttyUSB2"),
                     QStringLiteral("/dev/ttyS0"),    QStringLiteral("/dev/ttyACM1"),
                     QStringLiteral("/dev/ttyUSB1"),  QStringLiteral("/dev/ttyS10"),
                     QStringLiteral("/dev/ttyS4")};
  std::sort(devices.begin(), devices.end(), comes_before);
  const std::array expected{QStringLiteral("/dev/ttyACM1"), QStringLiteral("/dev/ttyS0"),
                            QStringLiteral("/dev/ttyS4"),   QStringLiteral("/dev/ttyS10"),
                            QStringLiteral("/dev/ttyUSB1"), QStringLiteral("/dev/ttyUSB2"),
                            QStringLiteral("/dev/ttyUSB10")};
  EXPECT_EQ(devices, expected);
}

TEST(port_names, the_order_is_strict) {
  const QString device = QStringLiteral("/dev/ttyS1");
  EXPECT_FALSE(comes_before(device, device));
  EXPECT_TRUE(comes_before(QStringLiteral("/dev/ttyS"), device));
  EXPECT_FALSE(comes_before(device, QStringLiteral("/dev/ttyS")));
  // The same number written in two ways still has one order.
  EXPECT_NE(comes_before(QStringLiteral("/dev/ttyS01"), device),
            comes_before(device, QStringLiteral("/dev/ttyS01")));
}

}  // namespace
