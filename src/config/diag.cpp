#include "config/diag.h"

#include "config/identification.h"
#include "shell/code_page.h"
#include "shell/fonts.h"
#include "shell/labels.h"
#include "shell/text_box.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <array>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// A button and what it sends. The display texts and the two-digit arguments are fixed patterns.
struct Command {
  DiagGroup group;
  const char* caption;
  std::string_view payload;
  std::string_view second_payload = {};  ///< sent after the first, whatever became of it
  bool wait_for_acknowledge = true;
};

constexpr std::array commands{
    // The only one sent without waiting for an acknowledge.
    Command{DiagGroup::reader, "Reset Reader", "\0U"sv, {}, false},
    Command{DiagGroup::displays, "Test Display", "D1234ABCD"sv},
    Command{DiagGroup::displays, "Test Clock Display", "T5678"sv},
    Command{DiagGroup::leds, "Red Led On", "}00"sv},
    Command{DiagGroup::leds, "Red Led Off", "{00"sv},
    Command{DiagGroup::leds, "Green Led On", "]00"sv},
    Command{DiagGroup::leds, "Green Led Off", "[00"sv},
    Command{DiagGroup::leds, "Blink Red Led", ")00"sv},
    Command{DiagGroup::leds, "Blink Green Led", ">50"sv},
    Command{DiagGroup::relay_and_speaker, "Test Relay", "!01"sv},
    Command{DiagGroup::relay_and_speaker, "Test Speaker", "&50"sv},
    Command{DiagGroup::operating_mode, "Vell Mode", "|1"sv},
    Command{DiagGroup::operating_mode, "Orin Mode", "|3"sv},
    Command{DiagGroup::operating_mode, "Orinta Mode", "|4"sv},
    Command{DiagGroup::operating_mode, "Accum Mode", "|5"sv},
    Command{DiagGroup::sense_inputs_and_protocol, "Auto Sense Inputs", "\0DA1"sv, "\0DA2"sv},
    // The same payload twice, unlike the two of the button above: that is meant.
    Command{DiagGroup::sense_inputs_and_protocol, "No Auto Sense Inputs", "\0DA0"sv, "\0DA0"sv},
    Command{DiagGroup::sense_inputs_and_protocol, "Protocol Mode", "\0ITP"sv},
    Command{DiagGroup::sense_inputs_and_protocol, "No Protocol Mode", "\0ITN"sv},
};

void send(ReaderLink& link, const Command& command) {
  link.send_command(command.payload, command.wait_for_acknowledge);
  if (!command.second_payload.empty()) {
    link.send_command(command.second_payload, command.wait_for_acknowledge);
  }
}

}  // namespace

DiagScreen::DiagScreen(Services& services, QWidget* parent) : Screen("diag", services, parent) {
  auto* const grid = new QGridLayout(this);
  grid->addWidget(heading(QStringLiteral("Diagnostics")), 0, 0, 1, 2, Qt::AlignHCenter);
  grid->addWidget(identification_group(), 1, 0, 1, 2);
  const auto commands_on = [this](DiagGroup group, const char* title) {
    return command_group(group, QLatin1String(title)).frame;
  };
  grid->addWidget(commands_on(DiagGroup::displays, "Displays"), 2, 0);
  grid->addWidget(commands_on(DiagGroup::relay_and_speaker, "Relay and Speaker"), 2, 1);
  grid->addWidget(commands_on(DiagGroup::leds, "Leds"), 3, 0);
  grid->addWidget(commands_on(DiagGroup::operating_mode, "Operating Mode"), 3, 1);
  grid->addWidget(commands_on(DiagGroup::sense_inputs_and_protocol, "Sense Inputs and Protocol"), 4, 0, 1, 2);
  grid->setRowStretch(5, 1);
}

QWidget* DiagScreen::identification_group() {
  // Before the group's commands: what the focus finds first must change nothing in the reader.
  const QString caption = QStringLiteral("Reader Identification");
  QPushButton* const identify_button = add_button(caption, [this] { identify(); });
  identification_ = new TextBox("Text4", caption, 0, KeyFilter::none);
  identification_->setReadOnly(true);
  identification_->setFont(fonts::fixed(9.75));
  const panel::Group group = command_group(DiagGroup::reader, QStringLiteral("Reader"), identify_button);
  group.grid->addWidget(identification_, 1, 0, 1, 2);
  return group.frame;
}

/// The group's buttons, two a row, after `first` where there is one.
panel::Group DiagScreen::command_group(DiagGroup group, const QString& title, QPushButton* first) {
  auto* const box = new QGroupBox(title);
  auto* const grid = new QGridLayout(box);
  int place = 0;
  const auto add = [grid, &place](QPushButton* button) {
    grid->addWidget(button, place / 2, place % 2);
    ++place;
  };
  if (first != nullptr) {
    add(first);
  }
  for (const Command& command : commands) {
    if (command.group == group) {
      add(add_button(QLatin1String(command.caption), [this, &command] { send(services().link, command); }));
    }
  }
  grid->setRowStretch(place, 1);
  return {box, grid};
}

void DiagScreen::identify() {
  identification_->clear();
  if (const auto text = read_identification(services().link, services().dialogs)) {
    identification_->setText(code_page::from_windows_1252(*text));
  }
}
