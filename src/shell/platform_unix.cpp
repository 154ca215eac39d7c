#include "shell/platform.h"

#include <QDir>

#include <cerrno>
#include <system_error>
#include <unistd.h>

std::filesystem::path tarvos_folder() {
  return std::filesystem::path(QDir::homePath().toStdU16String()) / "tarvos";
}

std::string sync_to_disk(int file_handle) {
  while (fsync(file_handle) != 0) {
    // Some places cannot be synced; their writes are as safe as they get.
    if (errno == EINVAL || errno == ENOTSUP) {
      break;
    }
    if (errno != EINTR) {
      return std::system_category().message(errno);
    }
  }
  return {};
}
