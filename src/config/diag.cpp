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

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::array group_captions{
    "Reader", "Displays", "Leds", "Relay and Speaker", "Operating Mode", "Sense Inputs and Protocol"};

/// A button and what it sends. The display texts and the two-digit arguments are fixed patterns.
struct Command {
  int group;
  const char* caption;
  std::string_view payload;
  std::string_view second_payload = {};  ///< sent after the first, whatever became of it
  bool wait_for_acknowledge = true;
};

constexpr std::array commands{
    // The only one sent without waiting for an acknowledge.
    Command{0, "Reset Reader", "\0U"sv, {}, false},
    Command{1, "Test Display", "D1234ABCD"sv},
    Command{1, "Test Clock Display", "T5678"sv},
    Command{2, "Red Led On", "}00"sv},
    Command{2, "Red Led Off", "{00"sv},
    Command{2, "Green Led On", "]00"sv},
    Command{2, "Green Led Off", "[00"sv},
    Command{2, "Blink Red Led", ")00"sv},
    Command{2, "Blink Green Led", ">50"sv},
    Command{3, "Test Relay", "!01"sv},
    Command{3, "Test Speaker", "&50"sv},
    Command{4, "Vell Mode", "|1"sv},
    Command{4, "Orin Mode", "|3"sv},
    Command{4, "Orinta Mode", "|4"sv},
    Command{4, "Accum Mode", "|5"sv},
    Command{5, "Auto Sense Inputs", "\0DA1"sv, "\0DA2"sv},
    // The same payload twice, unlike the two of the button above: that is meant.
    Command{5, "No Auto Sense Inputs", "\0DA0"sv, "\0DA0"sv},
    Command{5, "Protocol Mode", "\0ITP"sv},
    Command{5, "No Protocol Mode", "\0ITN"sv},
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
  grid->addWidget(command_group(1), 2, 0);
  grid->addWidget(command_group(3), 2, 1);
  grid->addWidget(command_group(2), 3, 0);
  grid->addWidget(command_group(4), 3, 1);
  grid->addWidget(command_group(5), 4, 0, 1, 2);
  grid->setRowStretch(5, 1);
}

QWidget* DiagScreen::identification_group() {
  // Before the group's commands: what the focus finds first must change nothing in the reader.
  const QString caption = QStringLiteral("Reader Identification");
  QPushButton* const identify_button = add_button(caption, [this] { identify(); });
  identification_ = new TextBox("Text4", caption, 0, KeyFilter::none);
  identification_->setReadOnly(true);
  identification_->setFont(fonts::fixed(9.75));
  QWidget* const group = command_group(0, identify_button);
  static_cast<QGridLayout*>(group->layout())->addWidget(identification_, 1, 0, 1, 2);
  return group;
}

/// The group's buttons, two a row, after `first` where there is one.
QWidget* DiagScreen::command_group(int group, QPushButton* first) {
  auto* const box = new QGroupBox(QLatin1String(group_captions.at(static_cast<std::size_t>(group))));
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
  return box;
}

void DiagScreen::identify() {
  identification_->clear();
  if (const auto text = read_identification(services().link, services().dialogs)) {
    identification_->setText(code_page::from_windows_1252(*text));
  }
}
