// The serial ports of systems that name them by device file.

#include "link/port_names.h"

#include <QCollator>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <vector>

namespace {

/// Ports that stand for no hardware: the placeholders of the 8250 driver have neither a vendor nor a
/// description, and macOS lists each port a second time as a call-in device.
bool is_real(const QSerialPortInfo& port) {
  if (port.portName().startsWith(QStringLiteral("tty."))) {
    return false;
  }
  const QFileInfo driver(QStringLiteral("/sys/class/tty/") + port.portName() +
                         QStringLiteral("/device/driver"));
  return !driver.exists() || QFileInfo(driver.canonicalFilePath()).fileName() != QStringLiteral("serial8250");
}

}  // namespace

QString system_device_of_com_port(int port_number) {
  std::vector<QString> devices;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    if (is_real(port)) {
      devices.push_back(port.systemLocation());
    }
  }
  // By name, numbers as numbers, so that the order does not change from one start to the next.
  QCollator order;
  order.setNumericMode(true);
  std::sort(devices.begin(), devices.end(), order);
  const auto index = static_cast<std::size_t>(port_number - 1);
  return index < devices.size() ? devices[index] : QString();
}
