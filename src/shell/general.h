#pragma once

#include "shell/screen.h"

#include <QTextEdit>

/// A document to read, select and copy. Page Up, Page Down, Home and End scroll it; with Shift they select.
class DocumentView : public QTextEdit {
 public:
  DocumentView(const char* object_name, const QString& accessible_name, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// The built-in help, one document that is part of the program.
class GeneralScreen : public Screen {
 public:
  GeneralScreen(Services& services, QWidget* parent);
};
