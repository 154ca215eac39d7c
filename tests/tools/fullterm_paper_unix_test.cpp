// What the full-screen terminal prints, on paper as far as a test can hold it: painted to an image, printed
// to a PDF file, and through a real print queue.

#include "shell/code_page.h"
#include "shell/main_window.h"
#include "shell/program.h"
#include "shell/qt_dialogs.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/pty.h"
#include "support/scripted_dialogs.h"
#include "support/window_hands.h"
#include "tools/fullterm.h"
#include "tools/fullterm_print.h"
#include "tools/terminal_qt_printer.h"

#include <QAccessible>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPaintEngine>
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
#include <vector>

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

bool is_fixed_pitch(const QString& font_name) {
  return font_name.contains(QRegularExpression(QStringLiteral("Mono|Courier|Gothic")));
}

/// Paper that keeps the fonts of what is painted on it.
class FontKeeper : public QPaintDevice {
 public:
  std::vector<QFont> fonts;  ///< one entry a drawn character

  [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine_; }

 protected:
  [[nodiscard]] int metric(PaintDeviceMetric which) const override {
    switch (which) {
      case PdmDpiX:
      case PdmDpiY:
      case PdmPhysicalDpiX:
      case PdmPhysicalDpiY:
        return 72;  // a pixel a point
      case PdmWidth:
      case PdmHeight:
        return 1000;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      default:
        return 1;
    }
  }

 private:
  struct Engine : QPaintEngine {
    explicit Engine(FontKeeper& keeper) : keeper_(keeper) {}
    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {}
    void drawTextItem(const QPointF& /*where*/, const QTextItem& text) override {
      keeper_.fonts.push_back(text.font());
    }
    [[nodiscard]] Type type() const override { return User; }
    FontKeeper& keeper_;
  };

  mutable Engine engine_{*this};
};

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

TEST(fullterm_paper, every_character_is_of_twelve_points_and_of_the_font_of_the_job_where_there_is_one) {
  FontKeeper paper;
  QPainter painter(&paper);
  paint_job(painter, QRectF(0, 0, 1000, 1000), print_job_of("AB\xFF\xFF\x82\xB0"), [] { FAIL(); });
  painter.end();
  ASSERT_EQ(paper.fonts.size(), 4U);
  for (std::size_t index = 0; index < paper.fonts.size(); ++index) {
    const QFont& font = paper.fonts.at(index);
    EXPECT_EQ(font.pointSizeF(), 12) << index;
    EXPECT_EQ(font.bold(), index < 2) << index;
    EXPECT_TRUE(font.fixedPitch()) << index;
    EXPECT_EQ(font.families().value(0), QStringLiteral("letter gothic")) << index;
    EXPECT_TRUE(font.families().contains(QStringLiteral("Courier New"))) << index;
  }
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
  EXPECT_TRUE(is_fixed_pitch(fonts_of_pdf(file, false)[0])) << fonts_of_pdf(file, false)[0].toStdString();
}

TEST(fullterm_paper, bytes_from_128_on_are_dos_characters_on_paper) {
  if (!has("pdftotext")) {
    GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
  }
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("terminal.pdf"));
  PaperBench bench;
  std::string typed;
  for (int code = 128; code < 255; ++code) {  // a pair of the last would be a mark
    typed += static_cast<char>(code);
  }
  const PrintJob job = print_job_of(typed + "\xFF\xFF\x82\xB0\xDB\x9B\xE1");
  ASSERT_EQ(bench.printer.print_to_pdf(job, file.toStdString()), Printer::Result::printed);
  const QString text = lines_of_pdf(file).join(QString());
  for (const char byte : typed) {
    const QChar glyph = code_page::from_dos_437(byte);
    EXPECT_TRUE(text.contains(glyph)) << std::hex << int{byte} << ' ' << QString(glyph).toStdString();
  }
  EXPECT_TRUE(text.endsWith(QStringLiteral("\u00E9\u2591\u2588\u00A2\u00DF"))) << text.toStdString();
}

TEST(fullterm_paper, an_assistive_client_that_reaches_past_the_print_dialog_waits_for_its_answer) {
  TestPump pump;
  FakePort port{pump};
  QtDialogs dialogs{pump};
  QtPrinter printer{dialogs};
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};
  window.start_up();
  window.show();
  int clicks = 0;
  QObject::connect(&window.menu(), &MenuColumn::entry_clicked, &window, [&clicks] { ++clicks; });
  QTimer hand;
  QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
    if (QPrintDialog* const dialog = open_print_dialog()) {
      hand.stop();
      QAccessible::queryAccessibleInterface(window.menu().entry(menu_index(ScreenCode::diag)))
          ->actionInterface()
          ->doAction(QAccessibleActionInterface::pressAction());
      EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks == 1; }));
      EXPECT_EQ(window.screen_code(), ScreenCode::com);
      dialog->reject();
    }
  });
  hand.start(5);
  EXPECT_EQ(printer.print(print_job_of("abc")), Printer::Result::cancelled);
  EXPECT_TRUE(QTest::qWaitFor([&window] { return window.screen_code() == ScreenCode::diag; }));
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
  for (const bool bold : {true, false}) {
    ASSERT_EQ(fonts_of_pdf(file, bold).size(), 1);
    EXPECT_TRUE(is_fixed_pitch(fonts_of_pdf(file, bold)[0])) << fonts_of_pdf(file, bold)[0].toStdString();
  }
  QFile::remove(file);
}
