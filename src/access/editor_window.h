#pragma once

#include "shell/services.h"

#include <QMainWindow>

#include <filesystem>
#include <functional>

class QAction;

/// A window of its own beside the main window, with a menu bar.
class EditorWindow : public QMainWindow {
  Q_OBJECT

 public:
  EditorWindow(const char* object_name, Services& services, QWidget* parent);

  /// Shows the window as it is at its start. One that is open already only comes to the front.
  void open();

 protected:
  /// The state of a window that has just been opened.
  virtual void load() = 0;

  /// Sets the caption to the words and the name of a file, to the letter.
  void show_file_name(const char* words, const std::filesystem::path& name);
  /// An entry of a menu, or of the menu bar itself, that runs `handler`.
  template <typename Menu>
  QAction* add_entry(Menu* menu, const char* caption, std::function<void()> handler) {
    QAction* const entry = new_entry(caption, std::move(handler));
    menu->addAction(entry);
    return entry;
  }
  [[nodiscard]] Services& services() const { return services_; }
  void run(const std::function<void()>& handler) { services_.clicks.run(handler); }

 private:
  QAction* new_entry(const char* caption, std::function<void()> handler);

  Services& services_;
};
