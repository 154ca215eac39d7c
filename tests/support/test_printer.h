#pragma once

#include "tools/terminal_printer.h"

#include <functional>
#include <optional>

/// A printer that keeps what it is given.
class TestPrinter : public Printer {
 public:
  bool is_available = true;
  Result result = Result::printed;
  std::function<void()> meanwhile;  ///< runs while the print dialog is open

  std::vector<PrintJob> jobs;
  std::optional<std::filesystem::path> pdf;  ///< the file of the last job, when it went to one

  [[nodiscard]] bool available() override { return is_available; }
  [[nodiscard]] Result print(const PrintJob& job) override {
    if (meanwhile) {
      meanwhile();
    }
    jobs.push_back(job);
    return result;
  }
  [[nodiscard]] Result print_to_pdf(const PrintJob& job, const std::filesystem::path& file) override {
    pdf = file;
    jobs.push_back(job);
    return result;
  }
};
