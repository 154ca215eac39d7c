#include "tools/hardware_test.h"

#include "link/numbers.h"
#include "shell/code_page.h"
#include "shell/labels.h"
#include "shell/safe_file.h"
#include "shell/text_box.h"
#include "tools/flag_guard.h"
#include "tools/profile_window.h"
#include "tools/terminal_receiver.h"
#include "tools/terminal_view.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

HardwareTestScreen::HardwareTestScreen(Services& services, QWidget* parent)
    : Screen("test", services, parent), hardware_test_(services.link, services.pump, profile_, *this) {
  auto* const grid = new QGridLayout(this);
  grid->addWidget(heading(QStringLiteral("Vell Hardware Test")), 0, 0, 1, 2, Qt::AlignHCenter);
  add_controls(*grid);

  grid->addWidget(step_list(), 4, 0);

  auto* const output_group = new QGroupBox(QStringLiteral("Reader"));
  output_ = new TerminalView("Text29", output_group->title(), TerminalView::LongLines::scroll, output_group);
  (new QVBoxLayout(output_group))->addWidget(output_);
  grid->addWidget(output_group, 4, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 2);
  grid->setRowStretch(4, 1);
}

/// Scrolls to the step sent last where the captions of all do not fit.
QWidget* HardwareTestScreen::step_list() {
  auto* const group = new QGroupBox(QStringLiteral("Steps"));
  steps_ = new QLabel;
  steps_->setObjectName(QStringLiteral("Label27"));
  steps_->setTextFormat(Qt::PlainText);
  steps_->setWordWrap(true);
  steps_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  auto* const area = new QScrollArea(group);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(steps_);
  // The group's own ground shows through both.
  area->viewport()->setAutoFillBackground(false);
  steps_->setAutoFillBackground(false);
  QScrollBar* const bar = area->verticalScrollBar();
  connect(bar, &QScrollBar::rangeChanged, bar, [bar](int /*top*/, int bottom) { bar->setValue(bottom); });
  (new QVBoxLayout(group))->addWidget(area);
  return group;
}

void HardwareTestScreen::add_controls(QGridLayout& grid) {
  delay_ = new TextBox("Text28", QStringLiteral("Continuous Test Delay"), 0, KeyFilter::digits, this);
  delay_->setText(QStringLiteral("0"));
  delay_->set_width_in_characters(6);
  auto* const delay_row = new QHBoxLayout;
  delay_row->addWidget(label_for(delay_));
  delay_row->addWidget(delay_);
  delay_row->addWidget(new QLabel(QStringLiteral("ms (0 runs once)")));
  delay_row->addStretch();
  grid.addLayout(delay_row, 1, 0, 1, 2);

  // The two blanks in the first two captions are meant.
  start_ = add_button(QStringLiteral("F1  Start"), [this] { start(); });
  stop_ = add_button(QStringLiteral("F2  Stop"), [this] { hardware_test_.stop(); });
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(start_);
  buttons->addWidget(stop_);
  buttons->addWidget(add_button(QStringLiteral("Profiles"), [this] { edit_profiles(); }));
  buttons->addWidget(add_button(QStringLiteral("Clear"), [this] { output_->clear(); }));
  grid.addLayout(buttons, 2, 0, 1, 2);

  profile_label_ = new QLabel(this);
  profile_label_->setObjectName(QStringLiteral("current_profile"));
  profile_label_->setTextFormat(Qt::PlainText);
  profile_label_->setWordWrap(true);
  profile_label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  grid.addWidget(profile_label_, 3, 0, 1, 2);
}

void HardwareTestScreen::entered() {
  if (profile_.testprofilefile == default_profile()) {
    provide_default_profile();
  }
  output_->clear();
  show_profile();
  services().receiver.start([this](const ReceivedLines& lines) {
    output_->append(lines);
    if (lines.size() > 1) {
      repaint_output();  // a line is seen as soon as it has ended, while the test holds the window
    }
  });
}

void HardwareTestScreen::start() {
  if (editor_wanted_ || editor_open_) {
    return;  // its window may change the tables
  }
  const std::string typed = code_page::to_windows_1252(delay_->text()).value_or(std::string());
  hardware_test_.start(std::chrono::milliseconds(std::max<int>(0, to_int16(typed))));
  if (!hardware_test_.running() && std::exchange(editor_wanted_, false)) {
    open_editor();
  }
}

/// A running test is ended before the window can change the tables that it runs from.
void HardwareTestScreen::edit_profiles() {
  if (editor_open_) {
    return;
  }
  hardware_test_.stop();
  if (hardware_test_.running()) {
    editor_wanted_ = true;
  } else {
    open_editor();
  }
}

void HardwareTestScreen::open_editor() {
  const FlagGuard open(editor_open_);
  ProfileWindow editor(
      services(), profile_, [this] { show_profile(); }, this);
  editor.exec();
}

void HardwareTestScreen::show_profile() {
  // Three blanks, and meant so.
  profile_label_->setText(QStringLiteral("Current Profile:   ") +
                          QString::fromStdString(shown_name(profile_.testprofilefile)));
  profile_label_->repaint();
}

void HardwareTestScreen::clear_steps() {
  steps_->clear();
}

void HardwareTestScreen::add_step(std::string_view caption) {
  steps_->setText(steps_->text() + code_page::from_windows_1252(caption) + u'\n');
  steps_->repaint();
}

void HardwareTestScreen::clear_output() {
  output_->clear();
}

void HardwareTestScreen::repaint_output() {
  output_->viewport()->repaint();
}
