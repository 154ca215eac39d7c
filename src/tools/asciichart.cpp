#include "tools/asciichart.h"

#include "shell/code_page.h"
#include "shell/fonts.h"
#include "shell/labels.h"
#include "tools/caret_code.h"
#include "tools/drawn_text.h"

#include <QLabel>
#include <QVBoxLayout>

#include <cstdio>

namespace {

constexpr int codes = 256;
constexpr int row_length = 73;  // characters
constexpr int row_count = 33;   // the rows below an empty line
constexpr qreal points = 9;

std::string cell(int code) {
  std::array<char, sizeof "000 00 "> numbers{};
  std::snprintf(numbers.data(), numbers.size(), "%03d %02X ", code, code);
  const auto byte = static_cast<char>(code);
  return numbers.data() + (is_control(byte) ? caret_code(byte) : std::string{byte}) + ' ';
}

}  // namespace

std::array<std::string, 32> chart_rows() {
  std::array<std::string, 32> rows;
  for (int code = 0; code < codes; ++code) {
    rows.at(static_cast<std::size_t>(code) % rows.size()) += cell(code);
  }
  return rows;
}

AsciiChartScreen::AsciiChartScreen(Services& services, QWidget* parent)
    : Screen("asciichart", services, parent) {
  const QString title = QStringLiteral("ASCII Chart");
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(heading(title), 0, Qt::AlignHCenter);
  chart_ = new DrawnText("chart", title, fonts::fixed(points));
  chart_->setMinimumSize(chart_->size_for(row_length, row_count));
  layout->addWidget(chart_, 1);
}

void AsciiChartScreen::entered() {
  chart_->clear();
  chart_->end_line();
  for (const std::string& row : chart_rows()) {
    chart_->print(code_page::from_dos_437(row), Qt::black);
  }
}
