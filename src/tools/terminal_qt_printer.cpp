#include "tools/terminal_qt_printer.h"

#include "shell/code_page.h"
#include "shell/fonts.h"
#include "shell/qt_dialogs.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace {

constexpr const char* document_name = "Tarvos - Terminal Mode";

QFont font_of(const PrintJob& job) {
  QFont font = fonts::fixed(job.font_size);
  font.setFamilies(QStringList(QString::fromStdString(job.font_name)) + font.families());
  return font;
}

}  // namespace

void paint_job(QPainter& painter, const QRectF& area, const PrintJob& job,
               const std::function<void()>& new_page) {
  QFont font = font_of(job);
  const QFontMetricsF metrics(font, painter.device());
  const qreal column = metrics.horizontalAdvance(u'0');
  const int lines_a_page = std::max(1, static_cast<int>(area.height() / metrics.lineSpacing()));
  // Paper too narrow for the columns gets narrower letters rather than cut lines.
  painter.save();
  painter.translate(area.topLeft());
  painter.scale(std::min(1.0, area.width() / (column * job.columns)), 1);
  int line_of_page = 0;
  for (const PrintLine& line : job.lines) {
    if (line_of_page == lines_a_page) {
      new_page();
      line_of_page = 0;
    }
    const qreal base = line_of_page * metrics.lineSpacing() + metrics.ascent();
    qreal left = 0;
    for (const PrintPiece& piece : line) {
      font.setBold(piece.bold);
      painter.setFont(font);
      // One by one: a glyph that comes from another font must not move the columns after it.
      for (const QChar character : code_page::dos_glyphs(code_page::from_dos_437(piece.bytes))) {
        painter.drawText(QPointF(left, base), QString(character));
        left += column;
      }
    }
    ++line_of_page;
  }
  painter.restore();
}

bool print_on(QPrinter& printer, const PrintJob& job) {
  printer.setDocName(QLatin1String(document_name));
  QPainter painter;
  if (!painter.begin(&printer)) {
    return false;
  }
  const QRectF area(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size());
  paint_job(painter, area, job, [&printer] { printer.newPage(); });
  return painter.end() && printer.printerState() != QPrinter::Error;
}

bool QtPrinter::available() {
  return !QPrinterInfo::availablePrinterNames().isEmpty();
}

Printer::Result QtPrinter::print(const PrintJob& job) {
  QPrinter printer(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
  QPrintDialog dialog(&printer, dialogs_.window_for_box());
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
  if (!dialogs_.accepted(dialog)) {
    return Result::cancelled;
  }
  return print_on(printer, job) ? Result::printed : Result::failed;
}

Printer::Result QtPrinter::print_to_pdf(const PrintJob& job, const std::filesystem::path& file) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdU16String(file.u16string()));
  return print_on(printer, job) ? Result::printed : Result::failed;
}
