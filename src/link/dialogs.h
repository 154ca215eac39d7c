#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

/// Where a file dialog starts. The folders are created when a dialog first starts in them.
enum class StartFolder {
  current,  ///< wherever the last dialog ended; a cancelled name stands in the program's current folder
  access,   ///< the folder of the access-control files
  tarvos,   ///< the folder of the test profiles
};

/// A common file dialog, as a rule over "Text (*.txt)|*.txt" with the default extension "txt".
struct FileRequest {
  std::string_view title;
  std::string_view file_name;  ///< proposed
  StartFolder folder = StartFolder::current;
  std::string_view filter = "Text (*.txt)";
  std::string_view extension = "txt";  ///< added to a name that has none
  bool written_in_place = false;       ///< else a save writes a new file beside the old one and replaces it
};

struct FileAnswer {
  bool accepted = false;       ///< false: cancelled
  std::filesystem::path name;  ///< the chosen file; after a cancel the proposed name, as it was proposed
};

/// The boxes that stop the program until somebody answers. Texts are UTF-8; CR breaks a line.
/// Each call throws ProgramClosing instead of showing anything once the program is being closed.
class Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  /// A box with the text and an OK button.
  virtual void message(std::string_view text) = 0;
  /// A box with the text and the buttons Yes and No. @return true for Yes.
  virtual bool ask(std::string_view text) = 0;
  /// The file must exist.
  virtual FileAnswer choose_open_file(const FileRequest& request) = 0;
  /// Asks before an existing file is replaced, and refuses a place that cannot be written.
  virtual FileAnswer choose_save_file(const FileRequest& request) = 0;

  /// While a box waits for its answer, everything else waits for the box.
  [[nodiscard]] bool box_open() const { return open_boxes_ > 0; }
  /// Runs `action` from the event loop once no box is open.
  void after_box(std::function<void()> action) { waiting_.push_back(std::move(action)); }

 protected:
  void box_opens() { ++open_boxes_; }
  /// @return what has waited for the box, once the last one is closed
  [[nodiscard]] std::vector<std::function<void()>> box_closes() {
    return --open_boxes_ > 0 ? std::vector<std::function<void()>>{} : std::exchange(waiting_, {});
  }

 private:
  int open_boxes_ = 0;
  std::vector<std::function<void()>> waiting_;
};
