#include "link/port_names.h"

#include <QtGlobal>

QString device_of_com_port(int port_number) {
  const QByteArray variable = "TARVOS_COM" + QByteArray::number(port_number);
  return qEnvironmentVariableIsSet(variable.constData()) ? qEnvironmentVariable(variable.constData())
                                                         : system_device_of_com_port(port_number);
}
