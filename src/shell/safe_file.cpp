#include "shell/safe_file.h"

#include "link/click.h"
#include "shell/platform.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

namespace {

[[noreturn]] void fail(std::string_view what, const std::filesystem::path& path, const std::string& reason) {
  throw ClickError(std::string{what} + " " + shown_name(path) + ": " + reason);
}

constexpr std::string_view saving = "Cannot save";

bool write_all(QFileDevice& file, std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  return file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.flush();
}

bool is_device(const std::filesystem::path& path) {
  std::error_code none;
  return std::filesystem::is_character_file(path, none);
}

void write_through(const std::filesystem::path& path, std::string_view bytes) {
  QFile file{QString::fromStdU16String(path.u16string())};
  if (!write_all(file, bytes)) {
    fail(saving, path, file.errorString().toStdString());
  }
}

}  // namespace

std::string shown_name(const std::filesystem::path& path) {
  return QString::fromStdU16String(std::filesystem::path(path).make_preferred().u16string()).toStdString();
}

void replace_file(const std::filesystem::path& path, std::string_view bytes) {
  if (is_device(path)) {
    write_through(path, bytes);
    return;
  }
  QSaveFile file{QString::fromStdU16String(path.u16string())};
  if (!write_all(file, bytes)) {
    fail(saving, path, file.errorString().toStdString());
  }
  // The commit below syncs too, but does not tell when the disk refuses.
  if (const std::string reason = sync_to_disk(file.handle()); !reason.empty()) {
    fail(saving, path, reason);
  }
  if (!file.commit()) {
    fail(saving, path, file.errorString().toStdString());
  }
}

std::string read_whole_file(const std::filesystem::path& path) {
  QFile file{QString::fromStdU16String(path.u16string())};
  if (!file.exists()) {
    throw ClickError("File not found: " + shown_name(path));
  }
  constexpr std::string_view what = "Cannot read";
  if (!file.open(QIODevice::ReadOnly)) {
    fail(what, path, file.errorString().toStdString());
  }
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) {
    fail(what, path, file.errorString().toStdString());
  }
  return bytes.toStdString();
}
