#include "config/clock_group.h"

#include "config/panel.h"
#include "shell/button.h"
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
  grid.setColumnStretch(1, 1);
  return display;
}

}  // namespace

ClockGroup::ClockGroup(Services& services, const ClockReading& reading, QWidget* parent)
    : QGroupBox(QStringLiteral("Date/Time"), parent), services_(services) {
  ReaderClock& clock = services.clock;
  auto* const grid = new QGridLayout(this);
  panel::make_compact(*grid);
  current_ = add_display(*grid, 0, QStringLiteral("Current Date/Time"), "current_date_time");
  reader_ = add_display(*grid, 1, QStringLiteral("Reader Date/Time"), "reader_date_time");
  panel::add_buttons(
      {this, grid}, 2,
      {add_button(QStringLiteral("Set Date/Time"), "set_date_time", [&clock] { clock.set_date_time(); }),
       add_button(QStringLiteral("Read Date/Time"), "read_date_time",
                  [&clock, reading] { clock.read_date_time(reading); })});
  connect(&clock, &ReaderClock::pc_clock_changed, this, &ClockGroup::show_texts);
  connect(&clock, &ReaderClock::reader_clock_changed, this, &ClockGroup::show_texts);
  show_texts();
}

QPushButton* ClockGroup::add_button(const QString& caption, const char* object_name,
                                    std::function<void()> action) {
  QPushButton* const button =
      new_button(services_.clicks, caption, QLatin1String(object_name), std::move(action), this);
  button->setAutoDefault(true);
  return button;
}

void ClockGroup::show_texts() {
  current_->setText(code_page::from_windows_1252(services_.clock.pc_clock_text()));
  reader_->setText(code_page::from_windows_1252(services_.clock.reader_clock_text()));
}
