#pragma once

#include <QString>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

/// A folder of its own for the files of a test, which goes with the object.
class TestFolder {
 public:
  [[nodiscard]] std::filesystem::path path() const { return folder_.path().toStdString(); }
  [[nodiscard]] std::filesystem::path path(std::string_view name) const { return path() / name; }
  std::filesystem::path write(std::string_view name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  /// All that stands in the file; "" without one.
  [[nodiscard]] std::string read(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] QString shown(std::string_view name) const {
    return QString::fromStdString(path(name).string());
  }

 private:
  const QTemporaryDir folder_;
};
