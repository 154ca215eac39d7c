#include "access/upload_file.h"

#include "access/columns.h"

bool UploadFile::create(const std::filesystem::path& path) {
  close();
  file_.open(path, std::ios::binary | std::ios::trunc);
  return file_.is_open();
}

bool UploadFile::write_line(std::string_view line) {
  file_ << line << line_end << std::flush;
  const bool written = file_.good();
  // A line that fails does not keep the next one from being tried: the place may have room again.
  file_.clear();
  return written;
}

void UploadFile::close() {
  file_.close();
  file_.clear();
}
