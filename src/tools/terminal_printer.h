#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A piece of a printed line in one weight. Bytes of the terminals' code page.
struct PrintPiece {
  std::string bytes;
  bool bold = false;
  bool operator==(const PrintPiece&) const = default;
};
using PrintLine = std::vector<PrintPiece>;

/// Lines of fixed-pitch text on paper.
struct PrintJob {
  std::vector<PrintLine> lines;
  std::string font_name;  ///< the nearest fixed-pitch font stands in where it is missing
  int font_size = 12;     ///< in points
  int columns = 80;       ///< fit on a line, made narrower where the paper is
};

/// The printers of this computer.
class Printer {
 public:
  enum class Result { printed, cancelled, failed };

  Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  virtual ~Printer() = default;

  /// @return false when there is no printer to print on.
  [[nodiscard]] virtual bool available() = 0;
  /// Asks on which printer, proposing the default one, and prints there.
  /// @throws ProgramClosing
  [[nodiscard]] virtual Result print(const PrintJob& job) = 0;
  /// Prints into a PDF file, without a printer.
  [[nodiscard]] virtual Result print_to_pdf(const PrintJob& job, const std::filesystem::path& file) = 0;
};
