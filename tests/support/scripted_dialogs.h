#pragma once

#include "link/dialogs.h"
#include "link/event_pump.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Dialogs that answer from a script. A box that nobody expected fails the test, and so does a scripted
/// answer that nobody asked for.
class ScriptedDialogs : public Dialogs {
 public:
  explicit ScriptedDialogs(EventPump* pump = nullptr) : pump_(pump) {}
  ~ScriptedDialogs() override;

  /// The next box is a message with exactly this text; `meanwhile` runs while it is open.
  void expect_message(std::string_view text, std::function<void()> meanwhile = {});
  void expect_question(std::string_view text, bool answer);
  /// The next box is a file dialog; it is accepted with `name`, or cancelled without one.
  void expect_open(std::string_view title, std::optional<std::filesystem::path> name);
  void expect_save(std::string_view title, std::optional<std::filesystem::path> name);
  /// Fails the test when a scripted box has not come; then forgets what was scripted.
  void verify();

  std::vector<std::string> shown;     ///< "message: …", "question: …", "open: …", "save: …" in order
  std::vector<FileRequest> requests;  ///< of every file dialog

  void message(std::string_view text) override;
  bool ask(std::string_view text) override;
  FileAnswer choose_open_file(const FileRequest& request) override;
  FileAnswer choose_save_file(const FileRequest& request) override;

 private:
  struct Step {
    std::string what;
    bool yes = false;
    std::optional<std::filesystem::path> name;
    std::function<void()> meanwhile;
  };

  Step next(const std::string& what);
  FileAnswer choose(const std::string& what, const FileRequest& request);

  EventPump* pump_;
  std::deque<Step> script_;
};
