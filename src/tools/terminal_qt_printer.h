#pragma once

#include "tools/terminal_printer.h"

#include <QRectF>

#include <functional>

class QPainter;
class QPrinter;
class QtDialogs;

/// The printers that the desktop knows.
class QtPrinter : public Printer {
 public:
  explicit QtPrinter(QtDialogs& dialogs) : dialogs_(dialogs) {}

  [[nodiscard]] bool available() override;
  [[nodiscard]] Result print(const PrintJob& job) override;
  [[nodiscard]] Result print_to_pdf(const PrintJob& job, const std::filesystem::path& file) override;

 private:
  QtDialogs& dialogs_;
};

/// Prints on a printer that has been chosen already. @return false when it takes nothing.
[[nodiscard]] bool print_on(QPrinter& printer, const PrintJob& job);

/// Paints a job into the area, page after page; `new_page` begins each further one.
void paint_job(QPainter& painter, const QRectF& area, const PrintJob& job,
               const std::function<void()>& new_page);
