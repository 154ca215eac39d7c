#include "tools/prottest.h"

#include "shell/code_page.h"
#include "shell/fonts.h"
#include "shell/labels.h"
#include "shell/text_box.h"
#include "tools/drawn_text.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int rows = 30;     // a full display
constexpr int columns = 64;  // what a reply at the usual speed fills; longer ones can be scrolled to
constexpr qreal points = 8.5;

QColor screen_colour(PollColour colour) {
  switch (colour) {
    case PollColour::red:
      return {0xFF, 0x00, 0x00};
    case PollColour::green:
      return {0x00, 0xFF, 0x00};
    case PollColour::black:
      break;
  }
  return {0x00, 0x00, 0x00};
}

}  // namespace

ProtTestScreen::ProtTestScreen(Services& services, QWidget* parent)
    : Screen("prottest", services, parent),
      poller_(services.link, services.pump, services.dialogs, services.busy, *this) {
  services.checkline = [this] { poller_.checkline(); };
  const QString title = QStringLiteral("Protocol Test");
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(heading(title), 0, Qt::AlignHCenter);
  auto* const controls = new QHBoxLayout;
  controls->addWidget(boxes());
  controls->addStretch();
  controls->addWidget(buttons());
  layout->addLayout(controls);
  protdisp_ = new DrawnText("protdisp", title, fonts::fixed(points));
  protdisp_->setMinimumSize(protdisp_->size_for(columns, rows));
  layout->addWidget(protdisp_, 1);
}

QWidget* ProtTestScreen::boxes() {
  const auto box = [](const char* object_name, const QString& label) {
    auto* const made = new TextBox(object_name, label, 0, KeyFilter::digits);
    made->set_width_in_characters(5);
    return made;
  };
  first_address_ = box("Text8", QStringLiteral("Addresses to Poll"));
  last_address_ = box("Text9", QStringLiteral("thru"));
  delay_ = box("Text24", QStringLiteral("Poll Delay (ms)"));
  time_out_ = box("Text25", QStringLiteral("Poll Timeout (ms)"));
  auto* const panel = new QWidget(this);
  panel->setMouseTracking(true);
  auto* const grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(label_for(first_address_), 0, 0);
  grid->addWidget(first_address_, 0, 1);
  grid->addWidget(label_for(last_address_), 0, 2, Qt::AlignRight);
  grid->addWidget(last_address_, 0, 3);
  grid->addWidget(label_for(delay_), 1, 0);
  grid->addWidget(delay_, 1, 1);
  grid->addWidget(label_for(time_out_), 1, 2);
  grid->addWidget(time_out_, 1, 3);
  return panel;
}

QWidget* ProtTestScreen::buttons() {
  start_ = add_button(
      QStringLiteral("F1 Start"), [this] { poller_.start(typed()); }, "Command86");
  stop_ = add_button(
      QStringLiteral("F2 Stop"), [this] { poller_.stop(); }, "Command87");
  show_all_ = new QCheckBox(QStringLiteral("Show all Polls"), this);
  show_all_->setObjectName(QStringLiteral("Check13"));
  connect(show_all_, &QCheckBox::toggled, this, [this](bool checked) { poller_.set_show_all(checked); });
  QPushButton* const reset = add_button(
      QStringLiteral("Reset All Readers"), [this] { poller_.reset_all_readers(); }, "Command92");
  auto* const panel = new QWidget(this);
  panel->setMouseTracking(true);
  auto* const grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(start_, 0, 0);
  grid->addWidget(stop_, 0, 1);
  grid->addWidget(show_all_, 1, 0);
  grid->addWidget(reset, 1, 1);
  return panel;
}

ProtTestScreen::~ProtTestScreen() {
  services().checkline = [] {};
}

/// The values that polling starts from. What is typed is read by "F1 Start" and never kept, so that every
/// visit shows these again: that is meant.
void ProtTestScreen::entered() {
  first_address_->setText(QStringLiteral("0"));
  last_address_->setText(QStringLiteral("0"));
  delay_->setText(QStringLiteral("100"));
  time_out_->setText(QStringLiteral("100"));
  show_all_->setChecked(poller_.show_all());
}

PollBoxes ProtTestScreen::typed() const {
  // A pasted character that is no byte is no number either, and is told as an empty box is.
  const auto bytes = [](const TextBox* box) {
    return code_page::to_windows_1252(box->text()).value_or(std::string());
  };
  return {bytes(first_address_), bytes(last_address_), bytes(delay_), bytes(time_out_)};
}

void ProtTestScreen::clear() {
  protdisp_->clear();
}

void ProtTestScreen::print(std::string_view line, PollColour colour) {
  protdisp_->print(code_page::from_dos_437(line), screen_colour(colour));
}
