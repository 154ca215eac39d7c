#pragma once

#include "access/transfers.h"
#include "simulator/bench.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/test_pump.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A port at the other end of which the simulated readers sit, at virtual time.
class SimulatedLine {
 public:
  SimulatedLine(FakePort& port, TestPump& pump, const readersim::Options& options)
      : port_(port), pump_(pump), bench_(options) {
    port.responder = [this](std::string_view bytes) {
      if (before_write) {
        before_write(bytes);
      }
      bench_.line().receive(bytes, now());
      await_readers();
    };
  }

  /// Called with every write before the readers hear it.
  std::function<void(std::string_view bytes)> before_write;

  [[nodiscard]] readersim::Line& line() { return bench_.line(); }
  [[nodiscard]] readersim::Reader& reader() { return bench_.line().seats().front()->reader; }
  std::string console(std::string_view command) { return bench_.obey(command, now()); }
  [[nodiscard]] readersim::TimePoint now() const {
    return std::chrono::duration_cast<readersim::TimePoint>(pump_.now() - start_);
  }

 private:
  void await_readers() {
    if (const auto due = bench_.line().next_due()) {
      const auto wait =
          std::chrono::ceil<std::chrono::milliseconds>(std::max(*due - now(), readersim::TimePoint{}));
      pump_.after(wait, [this] {
        for (const auto& output : bench_.line().take_due(now())) {
          if (output.hang_up) {
            port_.hang_up();
          } else {
            port_.arrive(output.bytes);
          }
        }
        await_readers();
      });
    }
  }

  FakePort& port_;
  TestPump& pump_;
  EventPump::TimePoint start_ = pump_.now();
  readersim::Bench bench_;
};

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

  SimulatedBench(readersim::Family family, bool networked)
      : simulated{port, pump, options(family, networked)} {
    settings.network_mode = networked;
    settings.reader_address = std::to_string(networked ? address : 0);
    link.open_at_start_up();
    link.set_network_mode(networked);
  }

  TestPump pump;
  FakePort port{pump};
  TolerantDialogs dialogs;
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
  BusyFlags busy;
  Transfers transfers{link, pump, dialogs, busy};
  SimulatedLine simulated;
  std::string status_text;
  bool status_shown = false;
  StatusLine status{[this](std::string_view text) {
                      status_text = text;
                      status_shown = true;
                    },
                    [this] { status_shown = false; }};

  [[nodiscard]] std::filesystem::path path(std::string_view name) const {
    static const QTemporaryDir
        folder;  // one for all benches: making and removing it costs more than a transfer
    return std::filesystem::path(folder.path().toStdString()) / name;
  }
  void write_file(std::string_view name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
  }
  [[nodiscard]] std::string file(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  static readersim::Options options(readersim::Family family, bool networked) {
    readersim::Options made;
    made.family = family;
    if (networked) {
      made.network = {address};
    }
    return made;
  }
};
