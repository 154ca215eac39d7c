#include "link/port_names.h"

#include <QStringView>
#include <QtGlobal>

namespace {

/// Takes the next piece of a name: a run of digits, or one other character.
QStringView take_piece(QStringView& name) {
  qsizetype length = 0;
  while (length < name.size() && name[length].isDigit()) {
    ++length;
  }
  const QStringView piece = name.first(length > 0 ? length : 1);
  name = name.sliced(piece.size());
  return piece;
}

int compare_pieces(QStringView piece, QStringView other) {
  if (piece.front().isDigit() && other.front().isDigit()) {
    const qulonglong number = piece.toULongLong();
    const qulonglong other_number = other.toULongLong();
    if (number != other_number) {
      return number < other_number ? -1 : 1;
    }
  }
  return piece.compare(other);
}

}  // namespace

bool comes_before(const QString& device, const QString& other) {
  QStringView rest = device;
  QStringView other_rest = other;
  while (!rest.isEmpty() && !other_rest.isEmpty()) {
    const int order = compare_pieces(take_piece(rest), take_piece(other_rest));
    if (order != 0) {
      return order < 0;
    }
  }
  return rest.size() < other_rest.size();
}

QString device_of_com_port(int port_number) {
  const QByteArray variable = "TARVOS_COM" + QByteArray::number(port_number);
  return qEnvironmentVariableIsSet(variable.constData()) ? qEnvironmentVariable(variable.constData())
                                                         : system_device_of_com_port(port_number);
}
