#include "config/vellsetup.h"

#include "config/panel.h"
#include "config/parameter_rule.h"
#include "link/frame.h"
#include "shell/text_box.h"

#include <QPushButton>

#include <array>
#include <string>
#include <string_view>

/// One button: what it sends and the box beside it, if any.
struct VellCommand {
  VellGroup group;
  const char* caption;
  std::string_view payload;  ///< without the parameter
  ParameterRule rule = ParameterRule::none;
  const char* box = nullptr;
  ParameterLimit limit = {};
};

namespace {

using namespace std::string_view_literals;
using enum VellGroup;
using enum ParameterRule;

constexpr ParameterLimit prefix_needed{0, "Must set a prefix"};
constexpr ParameterLimit speaker_limit{49, "Max speaker value can be 49"};
// 127 is refused: a reader's own address can never be the Global Address.
constexpr ParameterLimit address_limit{highest_address, "Max reader address can be 126"};

/// Every payload begins with NUL.
constexpr std::array vell_commands{
    VellCommand{sense_inputs, "Sense 1 Auto", "\0DA1"sv},
    VellCommand{sense_inputs, "Sense 2 Auto", "\0DA2"sv},
    VellCommand{sense_inputs, "Sense Inputs Off", "\0DA0"sv},
    VellCommand{sense_inputs, "Sense Input Delay Time", "\0D"sv, two_digits, "Text10"},
    VellCommand{keyboard, "Keyboard Enable Beep", "\0KSE"sv},
    VellCommand{keyboard, "Keyboard Disable Beep", "\0KSD"sv},
    VellCommand{keyboard, "Keyboard Prefix", "\0KP"sv, prefix_code, "Text11", prefix_needed},
    VellCommand{power_up, "Power Up Red Led On", "\0LRO"sv},
    VellCommand{power_up, "Power Up Red Led Off", "\0LRF"sv},
    VellCommand{power_up, "Power Up Grn Led On", "\0LGO"sv},
    VellCommand{power_up, "Power Up Grn Led Off", "\0LGF"sv},
    VellCommand{good_read, "Good Read Red Led Time", "\0LRE"sv, two_digits, "Text12"},
    VellCommand{good_read, "Good Read Red Led Off", "\0LRD"sv},
    VellCommand{good_read, "Good Read Grn Led Time", "\0LGE"sv, two_digits, "Text13"},
    VellCommand{good_read, "Good Read Grn Led Off", "\0LGD"sv},
    VellCommand{good_read, "Good Read Relay Time", "\0RTE"sv, two_digits, "Text14"},
    VellCommand{good_read, "No Relay for Good Read", "\0RTD"sv},
    VellCommand{good_read, "Good Read Spkr On Time", "\0STE"sv, two_digits, "Text17", speaker_limit},
    VellCommand{good_read, "No Spkr for Good Read", "\0STD"sv},
    VellCommand{reader, "Set Reader Address", "\0IA"sv, three_digits, "Text18", address_limit},
    VellCommand{reader, "C/R Terminator On", "\0ICE"sv},
    VellCommand{reader, "C/R Terminator Off", "\0ICD"sv},
    // Format and speed change the reader alone; the computer's port stays as the Communication screen says.
    VellCommand{data_format, "7 Bits Even", "\0IBE"sv},
    VellCommand{data_format, "7 Bits Odd", "\0IBO"sv},
    VellCommand{data_format, "8 Bits NP", "\0IBN"sv},
    VellCommand{speed, "1200 Baud", "\0IB3"sv},
    VellCommand{speed, "2400 Baud", "\0IB4"sv},
    VellCommand{speed, "4800 Baud", "\0IB5"sv},
    VellCommand{speed, "9600 Baud", "\0IB6"sv},
    VellCommand{speed, "19200 Baud", "\0IB7"sv},
};

/// The payload with the characters that the text of the command's box stands for.
std::string with_parameter(const VellCommand& command, std::string_view text) {
  return std::string(command.payload) + parameter_text(command.rule, text, command.limit);
}

/// The box that a rule needs. An address may be typed with anything in it; it is sent as it stands.
struct BoxKind {
  int length;
  KeyFilter filter;
};

constexpr BoxKind box_for(ParameterRule rule) {
  switch (rule) {
    case prefix_code:
      return {1, KeyFilter::none};
    case three_digits:
      return {3, KeyFilter::none};
    default:
      return {2, KeyFilter::digits};
  }
}

}  // namespace

VellSetupScreen::VellSetupScreen(Services& services, QWidget* parent)
    : Screen("vellsetup", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Vell Setup"), 2);
  grid->addWidget(command_frame(QStringLiteral("Sense Inputs"), {VellGroup::sense_inputs}, 1), 1, 0);
  grid->addWidget(command_frame(QStringLiteral("Power Up Leds"), {VellGroup::power_up}, 1), 1, 1);
  grid->addWidget(command_frame(QStringLiteral("Keyboard"), {VellGroup::keyboard}, 1), 2, 0);
  grid->addWidget(command_frame(QStringLiteral("Address and Terminator"), {VellGroup::reader}, 1), 2, 1);
  grid->addWidget(command_frame(QStringLiteral("Good Read"), {VellGroup::good_read}, 2), 3, 0, 1, 2);
  grid->addWidget(command_frame(QStringLiteral("Data Format and Speed of the Reader"),
                                {VellGroup::data_format, VellGroup::speed}, 5),
                  4, 0, 1, 2);
  grid->setRowStretch(5, 1);
}

/// A box: on a button an Enter pressed once too often would send its command.
QWidget* VellSetupScreen::first_control() const {
  return findChild<TextBox*>();
}

QWidget* VellSetupScreen::command_frame(const QString& title, std::initializer_list<VellGroup> groups,
                                        int columns) {
  const panel::Group frame = panel::make_group(title, this);
  for (int column = 0; column < columns; ++column) {
    frame.grid->setColumnStretch(2 * column, 1);
  }
  int row = 0;
  for (const VellGroup group : groups) {
    int column = 0;
    for (const VellCommand& command : vell_commands) {
      if (command.group == group) {
        row += column / columns;
        column %= columns;
        add_command(command, frame, row, column);
        ++column;
      }
    }
    ++row;
  }
  return frame.frame;
}

/// The button fills its cell, or leaves the end of it to its box.
void VellSetupScreen::add_command(const VellCommand& command, const panel::Group& frame, int row,
                                  int column) {
  const QString caption = QLatin1String(command.caption);
  if (command.box == nullptr) {
    QPushButton* const button =
        add_button(caption, [this, &command] { services().link.send_command(command.payload, true); });
    frame.grid->addWidget(button, row, 2 * column, 1, 2);
    return;
  }
  const auto [length, filter] = box_for(command.rule);
  auto* const box = new TextBox(command.box, caption, length, filter);
  keep_to_one_line(*box);
  QPushButton* const button = add_button(caption, [this, &command, box] {
    services().link.send_command(with_parameter(command, box->bytes()), true);
  });
  box->set_width_in_characters(3);
  frame.grid->addWidget(button, row, 2 * column);
  frame.grid->addWidget(box, row, 2 * column + 1);
}
