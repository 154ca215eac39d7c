#include "access/schedule_window.h"

#include "access/row_text.h"
#include "link/numbers.h"
#include "shell/code_page.h"
#include "shell/labels.h"
#include "shell/safe_file.h"
#include "shell/text_box.h"

#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr std::array<const char*, days_in_week> days{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                     "Friday", "Saturday", "Sunday"};
constexpr int number_digits = 2;
constexpr int time_digits = 4;

TextBox* time_box(const char* day, const char* what, const char* object_name, std::size_t index) {
  const QString name = QLatin1String(object_name) + QString::number(index);
  const QString label = QLatin1String(day) + u' ' + QLatin1String(what);
  // No limit to what is typed: the file takes the first four characters.
  auto* const box = new TextBox(name.toLatin1().constData(), label, 0, KeyFilter::none);
  box->set_width_in_characters(time_digits + 2);
  keep_to_one_line(*box);
  return box;
}

}  // namespace

ScheduleWindow::ScheduleWindow(Services& services, QWidget* parent)
    : EditorWindow("schedules", services, parent),
      editor_(services.dialogs),
      number_(new TextBox("schedule_number", QStringLiteral("Schedule #"), number_digits, KeyFilter::digits)),
      associated_(new TextBox("associated_schedule", QStringLiteral("Associated Schedule #"), number_digits,
                              KeyFilter::none)),
      update_(new QPushButton(QStringLiteral("Update This Schedule"))) {
  QMenu* const file = menuBar()->addMenu(QStringLiteral("&File"));
  add_entry(file, "&New", [this] {
    if (editor_.create_file()) {
      show_file();
    }
  });
  add_entry(file, "&Open", [this] {
    if (editor_.open_file()) {
      show_file();
    }
  });
  add_entry(file, "&Save", [this] { editor_.save_file(shown_texts()); });

  auto* const panel = new QWidget;
  auto* const column = new QVBoxLayout(panel);
  column->addLayout(numbers());
  column->addSpacing(fontMetrics().height() / 2);
  column->addLayout(times());
  column->addSpacing(fontMetrics().height() / 2);
  column->addWidget(update_, 0, Qt::AlignLeft);
  column->addStretch();
  setCentralWidget(panel);
  resize(QSize(fontMetrics().averageCharWidth() * 72, 0).expandedTo(sizeHint()));  // room for the caption

  update_->setObjectName(QStringLiteral("update_this_schedule"));
  update_->setAutoDefault(true);  // Enter presses it while it has the focus
  connect(update_, &QPushButton::clicked, this,
          [this] { run([this] { editor_.update(number_->text().toStdString(), shown_texts()); }); });
  connect(number_, &QLineEdit::returnPressed, this, [this] { run([this] { number_entered(); }); });
}

QGridLayout* ScheduleWindow::numbers() {
  auto* const grid = new QGridLayout;
  int row = 0;
  for (TextBox* const box : {number_, associated_}) {
    box->set_width_in_characters(number_digits + 1);
    grid->addWidget(label_for(box), row, 0);
    grid->addWidget(box, row++, 1);
  }
  grid->setColumnStretch(2, 1);
  return grid;
}

QGridLayout* ScheduleWindow::times() {
  auto* const grid = new QGridLayout;
  grid->addWidget(new QLabel(QStringLiteral("Start Time")), 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("End Time")), 0, 2);
  for (std::size_t d = 0; d < days.size(); ++d) {
    const int row = static_cast<int>(d) + 1;
    start_[d] = time_box(days[d], "Start Time", "start_time_", d);
    end_[d] = time_box(days[d], "End Time", "end_time_", d);
    grid->addWidget(new QLabel(QLatin1String(days[d])), row, 0);
    grid->addWidget(start_[d], row, 1);
    grid->addWidget(end_[d], row, 2);
  }
  grid->setColumnStretch(3, 1);
  return grid;
}

void ScheduleWindow::load() {
  editor_.load();
  setWindowTitle(QStringLiteral("Schedules (no file loaded)"));
  number_->clear();
  associated_->clear();
  for (std::size_t d = 0; d < start_.size(); ++d) {
    start_[d]->clear();
    end_[d]->clear();
  }
  enable_boxes(false);
}

void ScheduleWindow::enable_boxes(bool enabled) {
  for (QWidget* const widget : std::initializer_list<QWidget*>{number_, associated_, update_}) {
    widget->setEnabled(enabled);
  }
  for (std::size_t d = 0; d < start_.size(); ++d) {
    start_[d]->setEnabled(enabled);
    end_[d]->setEnabled(enabled);
  }
}

void ScheduleWindow::show_file() {
  enable_boxes(true);
  show_file_name("Schedule File: ", editor_.file_name());
  number_->setText(QString::fromStdString(with_leading_zeros(editor_.current(), number_digits)));
  show_texts();
  number_->setFocus();
  number_->selectAll();
}

void ScheduleWindow::show_texts() {
  const ScheduleTexts texts = editor_.current_texts();
  for (std::size_t d = 0; d < start_.size(); ++d) {
    start_[d]->setText(code_page::from_windows_1252(texts.start[d]));
    end_[d]->setText(code_page::from_windows_1252(texts.end[d]));
  }
  associated_->setText(code_page::from_windows_1252(texts.associated));
}

ScheduleTexts ScheduleWindow::shown_texts() const {
  const std::string row = "Schedule " + with_leading_zeros(editor_.current(), number_digits);
  ScheduleTexts texts;
  for (std::size_t d = 0; d < start_.size(); ++d) {
    texts.start[d] = bytes_of_row(row, start_[d]->text());
    texts.end[d] = bytes_of_row(row, end_[d]->text());
  }
  texts.associated = bytes_of_row(row, associated_->text());
  return texts;
}

/// Enter in the number box shows the schedule of that number.
void ScheduleWindow::number_entered() {
  if (editor_.validate_current(associated_->text().toStdString())) {
    editor_.getschedule(number_->text().toStdString());
    show_texts();
    number_->selectAll();  // for the next number
  }
}
