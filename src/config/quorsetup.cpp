#include "config/quorsetup.h"

#include "config/check_frame.h"
#include "config/clock_group.h"
#include "config/command_run.h"
#include "config/panel.h"
#include "link/frame.h"
#include "link/numbers.h"
#include "shell/text_box.h"

#include <QPushButton>

#include <array>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::array general_commands{
    CheckCommand{"Logging On", "logging_on", "\0+1"sv, "\0+0"sv},
    CheckCommand{"Print On", "print_on", "\0=1"sv, "\0=0"sv},
};

/// Both ages go with the same command character: the second has none of its own, and that is meant.
std::string age_command(std::int16_t age) {
  return introduced("(" + with_leading_zeros(age, 2));
}

}  // namespace

QuorSetupScreen::QuorSetupScreen(Services& services, QWidget* parent)
    : Screen("quorsetup", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Quor Setup"), 2);
  grid->addWidget(general_group(), 1, 0);
  grid->addWidget(age_group(), 1, 1);
  grid->addWidget(new ClockGroup(services, orinparam_clock_reading, this), 2, 0, 1, 2);
  grid->setRowStretch(3, 1);
}

QWidget* QuorSetupScreen::general_group() {
  auto* const frame = new CheckFrame(QStringLiteral("Quor General"), general_commands, this);
  frame->add_button(add_button(
      QStringLiteral("Set"), [this, frame] { send_run(services().link, frame->commands()); },
      "set_quor_general"));
  return frame;
}

QWidget* QuorSetupScreen::age_group() {
  const panel::Group group = panel::make_group(QStringLiteral("Quor Age Settings"), this);
  age_1_ = panel::add_box(group, 0, "Text26", QStringLiteral("Age 1"), 2, KeyFilter::digits);
  age_2_ = panel::add_box(group, 1, "Text27", QStringLiteral("Age 2"), 2, KeyFilter::digits);
  panel::add_buttons(group, 2,
                     {add_button(
                         QStringLiteral("Set"), [this] { set_ages(); }, "set_quor_ages")});
  return group.frame;
}

/// Both ages are converted before the first is sent: an empty box fails without half a setting.
void QuorSetupScreen::set_ages() {
  const std::int16_t age_1 = to_int16(age_1_->bytes());
  const std::int16_t age_2 = to_int16(age_2_->bytes());
  send_run(services().link, {age_command(age_1), age_command(age_2)});
}
