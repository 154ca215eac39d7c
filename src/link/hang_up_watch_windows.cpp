#include "link/hang_up_watch.h"

#include <QSerialPort>

#include <utility>

std::unique_ptr<QObject> watch_for_hang_up(QSerialPort& port, std::function<void()> on_hang_up) {
  auto watch = std::make_unique<QObject>();
  QObject* const context = watch.get();
  QObject::connect(&port, &QSerialPort::errorOccurred, context,
                   [context, action = std::move(on_hang_up)](QSerialPort::SerialPortError error) {
                     if (error == QSerialPort::ResourceError) {
                       QMetaObject::invokeMethod(context, action, Qt::QueuedConnection);
                     }
                   });
  return watch;
}
