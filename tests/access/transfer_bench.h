#pragma once

#include "access/transfers.h"
#include "support/link_bench.h"
#include "support/test_folder.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A reader on the fake port, written from the readers' side: it takes frames apart by itself and answers
/// them. What it sends for the nth answer can be spoilt.
class StubReader {
 public:
  StubReader(FakePort& port) : port_(port) {
    port.responder = [this](std::string_view written) { hear(written); };
  }

  bool networked = false;
  unsigned char address = 0;
  std::string identification = "VELL 1.23 01/02/01";
  std::string verdict = "A";         ///< on every downloaded command
  std::deque<std::string> verdicts;  ///< on the first ones, if any
  std::deque<std::string> records;   ///< handed out to "u" and "l", then "END"
  std::chrono::milliseconds delay{15};
  bool answers_broadcasts = false;
  /// Makes what goes out of the nth answer (0 for the first) and its bytes; empty for silence.
  std::function<std::string(int n, std::string_view command, std::string reply)> spoil;
  std::vector<std::string> heard;  ///< commands without their frames

 private:
  void hear(std::string_view written) {
    std::string_view command = written;
    bool broadcast = false;
    if (networked) {
      if (written.size() < 3 || written[1] != '\x02') {
        return;  // an ACK
      }
      const auto addressed = static_cast<unsigned char>(written[0]);
      broadcast = addressed == 0xFF;
      if (addressed != address + 0x80 && !broadcast) {
        return;
      }
      command = written.substr(2, written.size() - 3);
    } else {
      command.remove_suffix(1);
    }
    heard.emplace_back(command);
    if (broadcast && !answers_broadcasts) {
      return;
    }
    std::string reply = framed(answer_to(command), command);
    if (spoil) {
      reply = spoil(answers_, command, std::move(reply));
    }
    ++answers_;
    if (!reply.empty()) {
      port_.arrive(reply, delay);
    }
  }

  std::string answer_to(std::string_view command) {
    if (command == "V") {
      return identification;
    }
    if (command == "u" || command == "l") {
      if (records.empty()) {
        return "END";
      }
      std::string record = records.front();
      records.pop_front();
      return record;
    }
    if (command.starts_with("AC") || command.starts_with("AN") || command.starts_with("S")) {
      if (!verdicts.empty()) {
        std::string next = verdicts.front();
        verdicts.pop_front();
        return next;
      }
      return verdict;
    }
    return {};  // "ur", "lr", "cd" and "cl": an acknowledge on a network, nothing on a plain line
  }

  [[nodiscard]] std::string framed(const std::string& reply, std::string_view command) const {
    const bool acknowledged_only = command == "ur" || command == "lr" || command == "cd" || command == "cl";
    if (acknowledged_only) {
      return networked ? "\x06" : "";
    }
    // Data that equals the end of the reply makes a pair with it.
    const char end = networked ? '\x03' : '\x0D';
    return (networked ? "\x06\x02" : "") + reply + end;
  }

  FakePort& port_;
  int answers_ = 0;
};

/// The transfers on a stub reader at virtual time, in a folder of their own.
struct TransferBench : LinkBench {
  BusyFlags busy;
  Transfers transfers{link, pump, dialogs, busy};
  StubReader reader{port};
  std::vector<std::string> shown;  ///< every text of the status line, "(hidden)" where it was hidden
  StatusLine status{[this](std::string_view text) { shown.emplace_back(text); },
                    [this] { shown.emplace_back("(hidden)"); }};

  TransferBench() { std::filesystem::current_path(folder_.path()); }
  ~TransferBench() { std::filesystem::current_path(old_folder_); }

  void use_reader_at(unsigned char address) {
    use_network(std::to_string(address));
    link.set_network_mode(true);
    reader.networked = true;
    reader.address = address;
  }
  void use_all_readers() { use_reader_at(127); }

  [[nodiscard]] std::filesystem::path path(std::string_view name) const { return folder_.path(name); }
  std::filesystem::path write_file(std::string_view name, std::string_view bytes) const {
    return folder_.write(name, bytes);
  }
  [[nodiscard]] std::string file(std::string_view name) const { return folder_.read(name); }

 private:
  const std::filesystem::path old_folder_ = std::filesystem::current_path();
  const TestFolder folder_;
};

inline std::string blanks(std::size_t count) {
  return std::string(count, ' ');
}

inline constexpr std::string_view transfer_acks = "\x06\x06";

/// The boxes of the transfers, to the letter.
namespace boxes {
inline constexpr std::string_view port_not_open = "Comm port is not open";
inline constexpr std::string_view no_address = "A Network address has not been set";
inline constexpr std::string_view not_connected = "Reader is not Connected";
inline constexpr std::string_view download_complete = "        Download Complete         ";
inline constexpr std::string_view timed_out = "Reader timed out";
inline constexpr std::string_view upload_time_out = "Reader Timeout";
inline constexpr std::string_view upload_complete = "Upload Complete";
inline constexpr std::string_view downloading_to_all = "Warning - you are downloading to all readers";
inline constexpr std::string_view clearing_all = "Warning - you are clearing all readers";
inline constexpr std::string_view no_upload_from_127 = "You cannot upload from address 127";
inline constexpr std::string_view please_wait = "Please wait until upload/download complete";
inline constexpr std::string_view access_list_cleared = "        Reader Access List Cleared         ";
inline constexpr std::string_view log_cleared = "        Reader Log Data Cleared         ";
inline constexpr std::string_view record_size_not_set =
    "Record Size must be set in Orin Setup Screen prior to downloading";
inline constexpr std::string_view record_size_too_big =
    "Record size set in Orin Setup Screen is > 18\r18 is the maximum size that can be downloaded";
}  // namespace boxes
