// What the full-screen terminal prints, on paper as far as a test can hold it: painted to an image, printed
// to a PDF file, and through a real print queue.

#include "shell/program.h"
#include "shell/qt_dialogs.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/pty.h"
#include "support/scripted_dialogs.h"
#include "tools/fullterm.h"
#include "tools/fullterm_print.h"
#include "tools/terminal_qt_printer.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// No test of this program reaches a real printer: the print service is looked for here, and here alone.
QString service_folder() {
  static const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/tarvos-print-XXXXXX"));
  return folder.path();
}
const ScopedVariable print_service{"CUPS_SERVER", service_folder().toStdString() + "/socket"};
const ScopedVariable print_user{"CUPS_USER", "tarvos-test"};

/// Where the queue leaves the PDF files of users that the computer does not know.
const QString printed_folder = QStringLiteral("/var/spool/cups-pdf/ANONYMOUS");

QString output_of(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  process.waitForFinished();
  return QString::fromUtf8(process.readAllStandardOutput());
}

bool has(const char* program) {
  return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
}

/// The lines of a PDF file, without blanks at their ends.
QStringList lines_of_pdf(const QString& file) {
  QString text =
      output_of(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
  QStringList lines = text.remove(u'\f').split(u'\n');
  for (QString& line : lines) {
    line = line.trimmed();
  }
  lines.removeAll(QString());
  return lines;
}

/// The embedded fonts of a PDF file by name, the bold ones or the others.
QStringList fonts_of_pdf(const QString& file, bool bold) {
  QStringList names;
  for (const QString& line : output_of(QStringLiteral("pdffonts"), {file}).split(u'\n').mid(2)) {
    const QString name = line.section(u' ', 0, 0);
    if (!name.isEmpty() && name.contains(QStringLiteral("Bold")) == bold) {
      names << name;
    }
  }
  return names;
}

/// How much of an area is ink, in grey levels.
qint64 ink_in(const QImage& picture, const QRect& area) {
  qint64 ink = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      ink += 255 - qGray(picture.pixel(x, y));
    }
  }
  return ink;
}

QImage white_page(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(Qt::white);
  return picture;
}

const std::string mixed =
    "VERSION"
    "\xFF\xFF"
    "Orin 3.2"
    "\xFF\xFF"
    "DONE";

/// A print service with one queue, as long as it lives.
class PrintQueue {
 public:
  PrintQueue() {
    service_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    service_.start(QStringLiteral(TARVOS_SOURCES "/tests/tools/print_queue.sh"), {service_folder()});
    if (service_.waitForStarted()) {
      service_.waitForReadyRead(180000);
    }
    answer_ = QString::fromUtf8(service_.readLine()).trimmed();
  }
  ~PrintQueue() {
    service_.terminate();
    service_.waitForFinished(5000);
  }
  PrintQueue(const PrintQueue&) = delete;
  PrintQueue& operator=(const PrintQueue&) = delete;

  [[nodiscard]] QString answer() const { return answer_; }

 private:
  QProcess service_;
  QString answer_;
};

/// The full-screen terminal with the real printer.
struct PaperBench {
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  QtDialogs print_dialogs{pump};
  QtPrinter printer{print_dialogs};
  Program program{port, pump, dialogs, printer};
  FullTermWindow window{program.services()};

  PaperBench() {
    program.services().link.open_at_start_up();
    window.open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  void type(const QString& text) { QTest::keyClicks(window.focusWidget(), text); }
  void receive(std::string_view bytes) {
    port.arrive(bytes);
    pump.idle(25ms);
  }
};

QPrintDialog* open_print_dialog() {
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    if (auto* const dialog = qobject_cast<QPrintDialog*>(widget); dialog != nullptr && dialog->isVisible()) {
      return dialog;
    }
  }
  return nullptr;
}

/// The newest file that has been printed since then.
QString printed_after(const QDateTime& start) {
  const QFileInfoList files =
      QDir(printed_folder).entryInfoList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time);
  return files.isEmpty() || files[0].lastModified() < start ? QString() : files[0].filePath();
}

}  // namespace

TEST(fullterm_paper, eighty_columns_fit_the_width_of_the_paper_and_the_rest_stands_beneath) {
  for (const int width : {400, 1200}) {  // narrow paper, wide paper
    QImage picture = white_page({width, 400});
    QPainter painter(&picture);
    const QRect paper(10, 0, width - 20, 400);
    paint_job(painter, paper, print_job_of(std::string(100, 'M')), [] { FAIL(); });
    painter.end();
    const int line = 12 * 96 / 72;  // at least, in pixels
    EXPECT_GT(ink_in(picture, {width / 4, 0, width / 8, line}), 0);
    EXPECT_EQ(ink_in(picture, {width - 8, 0, 8, 400}), 0) << width;  // all stays on the paper
    EXPECT_EQ(ink_in(picture, {0, 3 * line, width, 400 - 3 * line}), 0);
  }
}

TEST(fullterm_paper, typed_text_is_darker_than_received_text) {
  QImage picture = white_page({1200, 100});
  QPainter painter(&picture);
  paint_job(painter, picture.rect(), print_job_of("HHHHHHHHHH\xFF\xFFHHHHHHHHHH"), [] { FAIL(); });
  painter.end();
  int end = picture.width() - 1;
  while (end > 0 && ink_in(picture, {end, 0, 1, 100}) == 0) {
    --end;
  }
  const QRect typed(0, 0, end / 2, 100);
  const QRect received(end / 2 + 1, 0, end / 2, 100);
  EXPECT_GT(ink_in(picture, received), 0);
  EXPECT_GT(ink_in(picture, typed), ink_in(picture, received) * 5 / 4);
}

TEST(fullterm_paper, a_full_page_is_followed_by_another) {
  QImage picture = white_page({800, 100});
  QPainter painter(&picture);
  int pages = 1;
  paint_job(painter, picture.rect(), print_job_of(std::string(20 * 80, 'x')), [&pages] { ++pages; });
  EXPECT_GE(pages, 3);
  EXPECT_LE(pages, 6);
}

TEST(fullterm_paper, pdf_file_holds_the_text_in_a_bold_and_a_plain_fixed_pitch_font) {
  if (!has("pdftotext")) {
    GTEST_SKIP() << "pdftotext and pdffonts (poppler-utils) are not installed";
  }
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("terminal.pdf"));
  PaperBench bench;
  QtPrinter& printer = bench.printer;
  ASSERT_EQ(printer.print_to_pdf(print_job_of(std::string(100, 'x')), file.toStdString()),
            Printer::Result::printed);
  EXPECT_EQ(lines_of_pdf(file), (QStringList{QString(80, u'x'), QString(20, u'x')}));
  EXPECT_EQ(fonts_of_pdf(file, true).size(), 1);
  EXPECT_TRUE(fonts_of_pdf(file, false).isEmpty());

  ASSERT_EQ(printer.print_to_pdf(print_job_of(mixed), file.toStdString()), Printer::Result::printed);
  EXPECT_EQ(lines_of_pdf(file), QStringList{QStringLiteral("VERSIONOrin 3.2DONE")});
  ASSERT_EQ(fonts_of_pdf(file, true).size(), 1);
  ASSERT_EQ(fonts_of_pdf(file, false).size(), 1);
  EXPECT_TRUE(
      fonts_of_pdf(file, false)[0].contains(QRegularExpression(QStringLiteral("Mono|Courier|Gothic"))))
      << fonts_of_pdf(file, false)[0].toStdString();
}

TEST(fullterm_paper, a_pdf_file_in_a_folder_that_is_not_there_fails) {
  PaperBench bench;
  EXPECT_EQ(bench.printer.print_to_pdf(print_job_of("abc"), "/nowhere/at/all.pdf"), Printer::Result::failed);
}

TEST(fullterm_paper, f8_prints_through_the_print_dialog_on_a_real_queue) {
  const PrintQueue queue;
  if (queue.answer() != QStringLiteral("ready")) {
    GTEST_SKIP() << queue.answer().toStdString();
  }
  const QDateTime start = QDateTime::currentDateTime().addSecs(-1);
  PaperBench bench;
  ASSERT_TRUE(bench.printer.available());
  bench.type(QString(100, u'x'));
  bench.receive("Orin 3.2");

  QString proposed;
  QTimer hand;
  QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
    if (QPrintDialog* const dialog = open_print_dialog()) {
      hand.stop();
      proposed = dialog->printer()->printerName();
      dialog->accept();
    }
  });
  hand.start(50);
  QTest::keyClick(bench.window.focusWidget(), Qt::Key_F8);
  EXPECT_EQ(proposed, QStringLiteral("Paper"));

  QString file;
  const auto printed = [&] {
    file = printed_after(start);
    return !file.isEmpty() && lines_of_pdf(file).size() > 1;
  };
  EXPECT_TRUE(QTest::qWaitFor(printed, 30000));
  EXPECT_EQ(lines_of_pdf(file),
            (QStringList{QString(80, u'x'), QString(20, u'x') + QStringLiteral("Orin 3.2")}));
  EXPECT_EQ(fonts_of_pdf(file, true).size(), 1);
  EXPECT_EQ(fonts_of_pdf(file, false).size(), 1);
  QFile::remove(file);
}
