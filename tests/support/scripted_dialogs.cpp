#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>
#include <utility>

ScriptedDialogs::~ScriptedDialogs() {
  verify();
}

void ScriptedDialogs::expect_message(std::string_view text, std::function<void()> meanwhile) {
  script_.push_back({"message: " + std::string(text), false, std::nullopt, std::move(meanwhile)});
}

void ScriptedDialogs::expect_question(std::string_view text, bool answer) {
  script_.push_back({"question: " + std::string(text), answer, std::nullopt, {}});
}

void ScriptedDialogs::expect_open(std::string_view title, std::optional<std::filesystem::path> name) {
  script_.push_back({"open: " + std::string(title), false, std::move(name), {}});
}

void ScriptedDialogs::expect_save(std::string_view title, std::optional<std::filesystem::path> name) {
  script_.push_back({"save: " + std::string(title), false, std::move(name), {}});
}

void ScriptedDialogs::verify() {
  for (const Step& step : std::exchange(script_, {})) {
    ADD_FAILURE() << "this box did not come: " << step.what;
  }
}

ScriptedDialogs::Step ScriptedDialogs::next(const std::string& what) {
  if (pump_ != nullptr) {
    pump_->throw_if_closing();
  }
  shown.push_back(what);
  if (script_.empty()) {
    ADD_FAILURE() << "nobody expected this box: " << what;
    return {};
  }
  Step step = std::move(script_.front());
  script_.pop_front();
  EXPECT_EQ(what, step.what);
  box_opens();
  if (step.meanwhile) {
    step.meanwhile();
  }
  for (auto& action : box_closes()) {
    pump_ != nullptr ? pump_->after_pause(std::move(action)) : action();
  }
  return step;
}

void ScriptedDialogs::message(std::string_view text) {
  next("message: " + std::string(text));
}

bool ScriptedDialogs::ask(std::string_view text) {
  return next("question: " + std::string(text)).yes;
}

FileAnswer ScriptedDialogs::choose(const std::string& what, const FileRequest& request) {
  requests.push_back(request);
  const Step step = next(what + std::string(request.title));
  return step.name ? FileAnswer{true, *step.name}
                   : FileAnswer{false, std::filesystem::path(request.file_name)};
}

FileAnswer ScriptedDialogs::choose_open_file(const FileRequest& request) {
  return choose("open: ", request);
}

FileAnswer ScriptedDialogs::choose_save_file(const FileRequest& request) {
  return choose("save: ", request);
}
