#include "tools/fullterm_print.h"

#include "link/dialogs.h"
#include "tools/terminal_printer.h"

namespace {

constexpr char mark = '\xFF';
constexpr std::string_view font_name = "letter gothic";
constexpr int font_size = 12;
constexpr int line_length = 80;

constexpr std::string_view no_printer =
    "No printer is set up on this computer.\rPrint to a PDF file instead?";
constexpr std::string_view printing_failed =
    "The printer does not take the print job.\rNothing has been printed.";
constexpr std::string_view file_failed = "The PDF file cannot be written.\rNothing has been printed.";

void append(PrintLine& line, char byte, bool bold) {
  if (line.empty() || line.back().bold != bold) {
    line.push_back({{}, bold});
  }
  line.back().bytes += byte;
}

Printer::Result print_to_chosen_pdf(const PrintJob& job, Printer& printer, Dialogs& dialogs) {
  const FileAnswer answer = dialogs.choose_save_file(
      {"Print to PDF File", "terminal.pdf", StartFolder::current, "PDF (*.pdf)", "pdf", true});
  return answer.accepted ? printer.print_to_pdf(job, answer.name) : Printer::Result::cancelled;
}

}  // namespace

PrintJob print_job_of(std::string_view captured) {
  PrintJob job{{1, PrintLine{}}, std::string(font_name), font_size, line_length};
  bool bold = true;
  int count = 0;
  for (std::size_t place = 0; place < captured.size(); ++place) {
    if (captured[place] == mark && place + 1 < captured.size() && captured[place + 1] == mark) {
      bold = !bold;
      ++place;
      continue;
    }
    append(job.lines.back(), captured[place], bold);
    if (++count == line_length) {
      job.lines.emplace_back();
      count = 0;
    }
  }
  return job;
}

void print_captured(std::string_view captured, Printer& printer, Dialogs& dialogs) {
  const PrintJob job = print_job_of(captured);
  if (printer.available()) {
    if (printer.print(job) == Printer::Result::failed) {
      dialogs.message(printing_failed);
    }
  } else if (dialogs.ask(no_printer)) {
    if (print_to_chosen_pdf(job, printer, dialogs) == Printer::Result::failed) {
      dialogs.message(file_failed);
    }
  }
}
