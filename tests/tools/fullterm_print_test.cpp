#include "tools/fullterm_print.h"

#include "support/scripted_dialogs.h"
#include "support/test_printer.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<PrintLine>;

constexpr std::string_view offer = "No printer is set up on this computer.\rPrint to a PDF file instead?";

struct PrintBench {
  TestPrinter printer;
  ScriptedDialogs dialogs;

  void print(std::string_view captured) { print_captured(captured, printer, dialogs); }
};

}  // namespace

TEST(fullterm_print, a_hundred_typed_characters_are_bold_in_lines_of_80_and_20) {
  const PrintJob job = print_job_of(std::string(100, 'x'));
  EXPECT_EQ(job.lines, (Lines{{{std::string(80, 'x'), true}}, {{std::string(20, 'x'), true}}}));
  EXPECT_EQ(job.font_name, "letter gothic");
  EXPECT_EQ(job.font_size, 12);
}

TEST(fullterm_print, typed_text_is_bold_and_received_text_plain) {
  const PrintJob job = print_job_of(
      "AB\xFF\xFFOK\xFF\xFF"
      "C");
  EXPECT_EQ(job.lines, (Lines{{{"AB", true}, {"OK", false}, {"C", true}}}));
}

TEST(fullterm_print, marks_do_not_count_for_the_length_of_a_line) {
  const PrintJob job = print_job_of(std::string(40, 'x') + "\xFF\xFF" + std::string(41, 'y'));
  EXPECT_EQ(job.lines,
            (Lines{{{std::string(40, 'x'), true}, {std::string(40, 'y'), false}}, {{"y", false}}}));
}

TEST(fullterm_print, a_received_pair_of_0xff_is_taken_for_a_mark) {
  const PrintJob job = print_job_of(
      "\xFF\xFF"
      "a\xFF\xFF"
      "b\xFF\xFF"
      "c");
  EXPECT_EQ(job.lines, (Lines{{{"a", false}, {"b", true}, {"c", false}}}));
}

TEST(fullterm_print, of_three_0xff_the_first_two_are_the_mark) {
  const PrintJob job = print_job_of(
      "\xFF\xFF\xFF"
      "OK\xFF\xFF"
      "T");
  EXPECT_EQ(job.lines, (Lines{{{"\xFF"
                                "OK",
                                false},
                               {"T", true}}}));
}

TEST(fullterm_print, a_single_0xff_is_printed) {
  EXPECT_EQ(print_job_of("a\xFF").lines, (Lines{{{"a\xFF", true}}}));
}

TEST(fullterm_print, the_job_goes_to_the_printer_without_a_box) {
  PrintBench bench;
  bench.print("abc");
  ASSERT_EQ(bench.printer.jobs.size(), 1U);
  EXPECT_EQ(bench.printer.jobs[0].lines, (Lines{{{"abc", true}}}));
  EXPECT_FALSE(bench.printer.pdf);
}

TEST(fullterm_print, a_cancelled_print_dialog_says_nothing) {
  PrintBench bench;
  bench.printer.result = Printer::Result::cancelled;
  bench.print("abc");
  EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(fullterm_print, a_printer_that_fails_is_told) {
  PrintBench bench;
  bench.printer.result = Printer::Result::failed;
  bench.dialogs.expect_message("The printer does not take the print job.\rNothing has been printed.");
  bench.print("abc");
}

TEST(fullterm_print, without_a_printer_a_pdf_file_is_offered) {
  PrintBench bench;
  bench.printer.is_available = false;
  bench.dialogs.expect_question(offer, true);
  bench.dialogs.expect_save("Print to PDF File", "/there/terminal.pdf");
  bench.print("abc");
  ASSERT_EQ(bench.printer.jobs.size(), 1U);
  EXPECT_EQ(bench.printer.pdf, "/there/terminal.pdf");
  EXPECT_EQ(bench.dialogs.requests[0].extension, "pdf");
}

TEST(fullterm_print, the_offered_pdf_file_can_be_declined_or_cancelled) {
  PrintBench bench;
  bench.printer.is_available = false;
  bench.dialogs.expect_question(offer, false);
  bench.print("abc");
  bench.dialogs.expect_question(offer, true);
  bench.dialogs.expect_save("Print to PDF File", std::nullopt);
  bench.print("abc");
  EXPECT_TRUE(bench.printer.jobs.empty());
}

TEST(fullterm_print, a_pdf_file_that_cannot_be_written_is_told) {
  PrintBench bench;
  bench.printer.is_available = false;
  bench.printer.result = Printer::Result::failed;
  bench.dialogs.expect_question(offer, true);
  bench.dialogs.expect_save("Print to PDF File", "/nowhere/terminal.pdf");
  bench.dialogs.expect_message("The PDF file cannot be written.\rNothing has been printed.");
  bench.print("abc");
}
