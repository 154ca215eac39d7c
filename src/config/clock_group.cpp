#include "config/clock_group.h"

#include "config/panel.h"
#include "shell/code_page.h"
#include "shell/fonts.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

/// A text that changes. It has no accessible name: its text is its name.
QLabel* add_display(QGridLayout& grid, int row, const QString& words, const char* object_name) {
  auto* const display = new QLabel;
  display->setObjectName(QLatin1String(object_name));
  display->setFont(fonts::fixed(9.75));
  display->setTextFormat(Qt::PlainText);  // what a reader sends is no markup
  display->setMinimumWidth(display->fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000  00:00:00")));
  grid.addWidget(new QLabel(words), row, 0);
  grid.addWidget(display, row, 1);
  return display;
}

}  // namespace

ClockGroup::ClockGroup(const ReaderClock& clock, QPushButton* set, QPushButton* read, QWidget* parent)
    : QGroupBox(QStringLiteral("Date/Time"), parent), clock_(clock) {
  auto* const grid = new QGridLayout(this);
  panel::make_compact(*grid);
  current_ = add_display(*grid, 0, QStringLiteral("Current Date/Time"), "current_date_time");
  reader_ = add_display(*grid, 1, QStringLiteral("Reader Date/Time"), "reader_date_time");
  panel::add_buttons({this, grid}, 2, {set, read});
  connect(&clock, &ReaderClock::pc_clock_changed, this, &ClockGroup::show_texts);
  connect(&clock, &ReaderClock::reader_clock_changed, this, &ClockGroup::show_texts);
  show_texts();
}

void ClockGroup::show_texts() {
  current_->setText(code_page::from_windows_1252(clock_.pc_clock_text()));
  reader_->setText(code_page::from_windows_1252(clock_.reader_clock_text()));
}
