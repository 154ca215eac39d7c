#pragma once

#include "access/transfers.h"
#include "support/bytes.h"
#include "support/sim_port.h"
#include "support/test_folder.h"
#include "support/test_pump.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Dialogs that take every box as it comes and remember its text.
class TolerantDialogs : public Dialogs {
 public:
  std::vector<std::string> messages;
  std::filesystem::path file;

  void message(std::string_view text) override { messages.emplace_back(text); }
  bool ask(std::string_view text) override {
    messages.emplace_back(text);
    return false;
  }
  FileAnswer choose_open_file(const FileRequest& /*request*/) override { return {true, file}; }
  FileAnswer choose_save_file(const FileRequest& /*request*/) override { return {true, file}; }
};

/// The transfers against one simulated reader.
struct SimulatedBench {
  static constexpr int address = 5;

  SimulatedBench(readersim::Family family, bool networked) : port{pump, options(family, networked)} {
    settings.network_mode = networked;
    settings.reader_address = std::to_string(networked ? address : 0);
    link.open_at_start_up();
    link.set_network_mode(networked);
  }

  TestPump pump;
  SimPort port;
  TolerantDialogs dialogs;
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
  BusyFlags busy;
  Transfers transfers{link, pump, dialogs, busy};
  std::string status_text;
  bool status_shown = false;
  StatusLine status{[this](std::string_view text) {
                      status_text = text;
                      status_shown = true;
                    },
                    [this] { status_shown = false; }};

  [[nodiscard]] readersim::Reader& reader() { return port.reader(settings.network_mode ? address : 0); }

  [[nodiscard]] std::filesystem::path path(std::string_view name) const { return folder().path(name); }
  void write_file(std::string_view name, std::string_view bytes) const { folder().write(name, bytes); }
  [[nodiscard]] std::string file(std::string_view name) const { return folder().read(name); }

 private:
  /// One for all benches: making and removing it costs more than a transfer.
  static const TestFolder& folder() {
    static const TestFolder all;
    return all;
  }
  static readersim::Options options(readersim::Family family, bool networked) {
    readersim::Options made;
    made.family = family;
    if (networked) {
      made.network = {address};
    }
    return made;
  }
};
