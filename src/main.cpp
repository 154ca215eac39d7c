#include "link/qt_event_pump.h"
#include "link/qt_serial_port.h"
#include "shell/application.h"
#include "shell/main_window.h"
#include "shell/program.h"
#include "shell/qt_dialogs.h"
#include "tools/terminal_qt_printer.h"

#include <QIcon>

int main(int argc, char** argv) {
  const Application application(argc, argv);
  Application::setApplicationName(QStringLiteral("Tarvos"));
  Application::setApplicationVersion(QStringLiteral(TARVOS_VERSION));
  Application::setDesktopFileName(QStringLiteral("org.tarvos.Tarvos"));
  Application::setWindowIcon(QIcon(QStringLiteral(":/shell/tarvos.png")));  // packaging/icons has its source

  QtSerialPort port;
  QtEventPump pump(port);
  QtDialogs dialogs(pump);
  QtPrinter printer(dialogs);
  Program program(port, pump, dialogs, printer);
  MainWindow window(program.services());
  QObject::connect(&window, &MainWindow::closed, &application, [] { Application::exit(0); });
  window.start_up();
  window.show();
  return Application::exec();
}
