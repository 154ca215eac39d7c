#pragma once

#include "shell/screen.h"

#include <array>
#include <string>

class DrawnText;

/// All 256 character codes with their decimal and hexadecimal values, as the terminals show them.
class AsciiChartScreen : public Screen {
 public:
  AsciiChartScreen(Services& services, QWidget* parent);

  void entered() override;

 private:
  DrawnText* chart_;
};

/// The rows of the chart, in bytes: 32 codes down, eight columns across. A control character stands as "^"
/// and the character 64 codes above it.
[[nodiscard]] std::array<std::string, 32> chart_rows();
