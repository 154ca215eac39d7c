#pragma once

#include <QLineEdit>

#include <string>

/// Which typed characters a box takes. A filter acts on keys that type a character; Delete, Tab, arrows,
/// Home, End and the clipboard keep working, and pasting is not filtered.
enum class KeyFilter {
  none,
  digits,               ///< "0" to "9" and Backspace
  digits_no_backspace,  ///< "0" to "9" alone: Backspace is discarded too
};

/// A single-line box of a screen.
class TextBox : public QLineEdit {
 public:
  /// @param object_name the box's name in the program ("Text10")
  /// @param accessible_name its label, or the caption of the button that uses it
  /// @param maximum_length in characters; 0: no limit
  TextBox(const char* object_name, const QString& accessible_name, int maximum_length, KeyFilter filter,
          QWidget* parent = nullptr);

  /// The text as bytes of Windows-1252. @throws ClickError when a character has no code there.
  [[nodiscard]] std::string bytes() const;

  /// Makes the box wide enough for so many digits, and no wider.
  void set_width_in_characters(int characters);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

 private:
  [[nodiscard]] bool takes(const QString& typed) const;

  KeyFilter filter_;
};

/// Keeps line ends out of a box whose text goes into a command or into the row of a file, from the clipboard
/// too: they would end it half-way.
void keep_to_one_line(QLineEdit& box);
