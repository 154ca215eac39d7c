#include "config/symbology.h"

#include "config/command_run.h"
#include "config/panel.h"
#include "shell/option_group.h"

#include <QPushButton>

#include <array>
#include <string_view>

namespace {

using namespace std::string_view_literals;

// Every payload begins with NUL.

constexpr std::array barcode_commands{
    CheckCommand{"Code 39", "code_39", "\0AO"sv, "\0AF"sv},
    CheckCommand{"I 2 of 5", "i_2_of_5", "\0HO"sv, "\0HF"sv},
    CheckCommand{"2 of 5", "2_of_5", "\0GO"sv, "\0GF"sv},
    CheckCommand{"Upca", "upca", "\0NO"sv, "\0NF"sv},
    CheckCommand{"Ean13", "ean13", "\0EO"sv, "\0EF"sv},
    CheckCommand{"Code128", "code128", "\0BO"sv, "\0BF"sv},
    CheckCommand{"Codabar", "codabar", "\0CO"sv, "\0CF"sv},
};

constexpr std::array option_commands{
    CheckCommand{"Track 1 Start/Stop", "track_1_start_stop", "\0M1SE"sv, "\0M1SD"sv},
    CheckCommand{"Track 1 T2 Char Set", "track_1_t2_char_set", "\0M1C2"sv, "\0M1C1"sv},
    CheckCommand{"Track 2 Start/Stop", "track_2_start_stop", "\0M2SE"sv, "\0M2SD"sv},
    CheckCommand{"Track 2 \"C\" Start", "track_2_c_start", "\0M2CO"sv, "\0M2CF"sv},
    CheckCommand{"Xmit T2 First", "xmit_t2_first", "\0M21"sv, "\0M11"sv},
};

/// The track that is switched off comes first.
struct TrackCommands {
  const char* caption;
  std::string_view first;
  std::string_view second;
};

constexpr std::array track_commands{
    TrackCommands{"Track 2", "\0M1F"sv, "\0M2O"sv},
    TrackCommands{"Track 1", "\0M2F"sv, "\0M1O"sv},
    TrackCommands{"Tracks 1/2", "\0M2O"sv, "\0M1O"sv},
};

/// The commands of an option; both tracks when none is chosen.
std::vector<std::string> commands_of_track(int option) {
  const TrackCommands& commands =
      option < 0 ? track_commands.back() : track_commands.at(static_cast<std::size_t>(option));
  return {std::string(commands.first), std::string(commands.second)};
}

}  // namespace

SymbologyScreen::SymbologyScreen(Services& services, QWidget* parent)
    : Screen("symbology", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Barcode/Mag Setup"), 2);
  grid->addWidget(check_group(QStringLiteral("Barcode"), barcode_commands, "set_barcodes"), 1, 0, 2, 1);
  grid->addWidget(track_group(), 1, 1);
  grid->addWidget(check_group(QStringLiteral("Magstripe Options"), option_commands, "set_magstripe_options"),
                  2, 1);
  grid->setRowStretch(3, 1);
}

QWidget* SymbologyScreen::check_group(const QString& title, std::span<const CheckCommand> commands,
                                      const char* button_name) {
  auto* const frame = new CheckFrame(title, commands, this);
  frame->add_button(add_button(
      QStringLiteral("Set"), [this, frame] { send_run(services().link, frame->commands()); }, button_name));
  return frame;
}

QWidget* SymbologyScreen::track_group() {
  QStringList captions;
  for (const TrackCommands& commands : track_commands) {
    captions << QLatin1String(commands.caption);
  }
  auto* const tracks = new OptionGroup("magstripe_tracks", QStringLiteral("Magstripe Tracks"), captions, -1,
                                       Qt::Vertical, this);
  QPushButton* const set = add_button(
      QStringLiteral("Set"),
      [this, tracks] { send_run(services().link, commands_of_track(tracks->chosen())); },
      "set_magstripe_tracks");
  panel::put_beside_options(*tracks, set);
  return tracks;
}
