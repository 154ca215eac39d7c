// Every fixed text of every screen: buttons, options, check boxes, labels and frames.

#include "support/window_bench.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>

#include <algorithm>

namespace {

QString text_of(const QWidget& widget) {
  if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
    return button->text();
  }
  if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
    return label->text();
  }
  const auto* const group = qobject_cast<const QGroupBox*>(&widget);
  return group == nullptr ? QString() : group->title();
}

struct Captions {
  const char* screen;
  std::vector<std::string> texts;  ///< sorted
};

const std::vector<Captions> captions{
    {"com",
     {"0 to 126, or 127 for all readers (the Global Address)",
      "1",
      "1200",
      "19200",
      "2",
      "2400",
      "3",
      "4",
      "4800",
      "5",
      "7",
      "8",
      "9600",
      "Baud Rate",
      "Com Port",
      "Communication Setup",
      "Data Bits",
      "Even",
      "Network Mode",
      "None",
      "Odd",
      "Off",
      "On",
      "Parity",
      "Reader Address"}},
    {"vellsetup",
     {"1200 Baud",
      "19200 Baud",
      "2400 Baud",
      "4800 Baud",
      "7 Bits Even",
      "7 Bits Odd",
      "8 Bits NP",
      "9600 Baud",
      "Address and Terminator",
      "C/R Terminator Off",
      "C/R Terminator On",
      "Data Format and Speed of the Reader",
      "Good Read",
      "Good Read Grn Led Off",
      "Good Read Grn Led Time",
      "Good Read Red Led Off",
      "Good Read Red Led Time",
      "Good Read Relay Time",
      "Good Read Spkr On Time",
      "Keyboard",
      "Keyboard Disable Beep",
      "Keyboard Enable Beep",
      "Keyboard Prefix",
      "No Relay for Good Read",
      "No Spkr for Good Read",
      "Power Up Grn Led Off",
      "Power Up Grn Led On",
      "Power Up Leds",
      "Power Up Red Led Off",
      "Power Up Red Led On",
      "Sense 1 Auto",
      "Sense 2 Auto",
      "Sense Input Delay Time",
      "Sense Inputs",
      "Sense Inputs Off",
      "Set Reader Address",
      "Vell Setup"}},
    {"orinparam",
     {"Accum Mode",
      "Bad Logging (Orinta)",
      "Current Date/Time",
      "Current Password",
      "Date/Time",
      "General",
      "New Password",
      "Off",
      "Off",
      "On",
      "On",
      "Orin Mode",
      "Orin/Orinta Setup",
      "Orinta Mode",
      "RS232 Logging (Orin)",
      "Read Date/Time",
      "Reader Date/Time",
      "Record Length",
      "Red Led Time",
      "Relay Time",
      "Set",
      "Set",
      "Set",
      "Set Date/Time",
      "Set Mode",
      "Set Mode",
      "Set Password",
      "Set/Change Password",
      "Vell Mode"}},
    {"keshsetup",
     {"Comma Delimited",
      "Comma Delimited Off",
      "Comma Delimited On",
      "Current Date/Time",
      "Date/Time",
      "Duplicate Read",
      "Duplicate Read Off",
      "Duplicate Read On",
      "Ferro Kesh General",
      "Glint Kesh General",
      "ID 1",
      "ID 1 / ID 2",
      "ID 1 On",
      "ID 2",
      "ID 2 On",
      "Kesh",
      "Kesh Setup",
      "Max Records",
      "Mode",
      "RS232 Logging",
      "RS232 Logging Off",
      "RS232 Logging On",
      "Read",
      "Read Date/Time",
      "Reader Date/Time",
      "Record Length",
      "Record Length",
      "Set",
      "Set",
      "Set",
      "Set",
      "Set",
      "Set",
      "Set",
      "Set Date/Time",
      "Time Stamping Off",
      "Time Stamping Off",
      "Time Stamping On",
      "Time Stamping On",
      "Vell"}},
    {"quorsetup",
     {"Age 1", "Age 2", "Current Date/Time", "Date/Time", "Logging On", "Print On", "Quor Age Settings",
      "Quor General", "Quor Setup", "Read Date/Time", "Reader Date/Time", "Set", "Set", "Set Date/Time"}},
    {"term",
     {"Clear Screen", "F10 = READER ADDRESS", "F9 = NULL", "Full  Screen", "Print", "Reader", "Terminal"}},
    {"prottest",
     {"Addresses to Poll", "F1 Start", "F2 Stop", "Poll Delay (ms)", "Poll Timeout (ms)", "Protocol Test",
      "Reset All Readers", "Show all Polls", "thru"}},
    {"test",
     {"Clear", "Continuous Test Delay", "Current Profile:   c:\\tarvos\\velltest.txt", "F1  Start",
      "F2  Stop", "Profiles", "Reader", "Steps", "Vell Hardware Test", "ms (0 runs once)"}},
    {"symbology",
     {"2 of 5",
      "Barcode",
      "Barcode/Mag Setup",
      "Codabar",
      "Code 39",
      "Code128",
      "Ean13",
      "I 2 of 5",
      "Magstripe Options",
      "Magstripe Tracks",
      "Set",
      "Set",
      "Set",
      "Track 1",
      "Track 1 Start/Stop",
      "Track 1 T2 Char Set",
      "Track 2",
      "Track 2 \"C\" Start",
      "Track 2 Start/Stop",
      "Tracks 1/2",
      "Upca",
      "Xmit T2 First"}},
    {"diag",
     {"Accum Mode",
      "Auto Sense Inputs",
      "Blink Green Led",
      "Blink Red Led",
      "Diagnostics",
      "Displays",
      "Green Led Off",
      "Green Led On",
      "Leds",
      "No Auto Sense Inputs",
      "No Protocol Mode",
      "Operating Mode",
      "Orin Mode",
      "Orinta Mode",
      "Protocol Mode",
      "Reader",
      "Reader Identification",
      "Red Led Off",
      "Red Led On",
      "Relay and Speaker",
      "Reset Reader",
      "Sense Inputs and Protocol",
      "Test Clock Display",
      "Test Display",
      "Test Relay",
      "Test Speaker",
      "Vell Mode"}},
    {"orintautil",
     {"Access List", "Clear", "Clear", "Download", "Download", "Edit/Modify", "Edit/Modify",
      "For readers manufactured prior to 2/1/01, it is suggested to put readers into Vell mode prior to any "
      "downloading",
      "Log", "Note on uploading/downloading...", "Orin/Orinta Utilities", "Schedules", "Upload", "Upload"}},
    {"keshutil", {"Clear", "Kesh/Quor Utilities", "Log", "Upload"}},
    {"asciichart", {"ASCII Chart"}},
    {"general", {}},
};

bool is_clock(const QWidget& widget) {
  return widget.objectName() == QStringLiteral("current_date_time");
}

}  // namespace

TEST(captions, are_on_every_screen_to_the_letter) {
  ASSERT_EQ(captions.size(), screen_table.size());
  WindowBench bench;
  for (std::size_t index = 0; index < captions.size(); ++index) {
    bench.click_menu(static_cast<int>(index));
    const Screen& screen = *bench.window.screen(bench.window.screen_code());
    EXPECT_EQ(screen.objectName().toStdString(), captions.at(index).screen);
    std::vector<std::string> texts;
    for (const QWidget* const widget : screen.findChildren<QWidget*>()) {
      if (const QString text = text_of(*widget); !text.isEmpty() && !is_clock(*widget)) {
        texts.push_back(text.toStdString());
      }
    }
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, captions.at(index).texts) << captions.at(index).screen;
  }
}
