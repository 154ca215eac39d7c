#include "access/upload_file.h"

#include "shell/safe_file.h"

bool UploadFile::create(const std::filesystem::path& path) {
  close();
  file_.setFileName(QString::fromStdU16String(path.u16string()));
  return file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

bool UploadFile::write_line(std::string_view line) {
  if (!file_.isOpen()) {
    return false;
  }
  const std::string whole = std::string{line} + std::string{line_end};
  const qint64 begin = file_.pos();
  const bool written =
      file_.write(whole.data(), static_cast<qint64>(whole.size())) == static_cast<qint64>(whole.size());
  if (!written) {
    // No piece of it stays, and the next line is tried again: the place may have room by then.
    file_.resize(begin);
    file_.seek(begin);
  }
  return written;
}
