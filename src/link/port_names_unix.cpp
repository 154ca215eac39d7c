// The serial ports of systems that name them by device file.

#include "link/port_names.h"

#include <QFile>
#include <QSerialPortInfo>

#include <algorithm>
#include <vector>

namespace {

/// Ports that stand for no hardware are left out: macOS lists each port a second time as a call-in device,
/// and Linux keeps up to 32 places for on-board ports, most of them of type 0, which means nothing there.
bool is_real(const QSerialPortInfo& port) {
  if (port.portName().startsWith(QStringLiteral("tty."))) {
    return false;
  }
  QFile type(QStringLiteral("/sys/class/tty/%1/type").arg(port.portName()));
  return !type.open(QIODevice::ReadOnly) || type.readAll().trimmed() != "0";
}

}  // namespace

QString system_device_of_com_port(int port_number) {
  std::vector<QString> devices;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    if (is_real(port)) {
      devices.push_back(port.systemLocation());
    }
  }
  std::sort(devices.begin(), devices.end(), comes_before);
  const auto index = static_cast<std::size_t>(port_number - 1);
  return index < devices.size() ? devices[index] : QString();
}
