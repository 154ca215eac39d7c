// The serial ports of Windows carry numbers themselves.

#include "link/port_names.h"

QString system_device_of_com_port(int port_number) {
  return QStringLiteral("COM%1").arg(port_number);
}
