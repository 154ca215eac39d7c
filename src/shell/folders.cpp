#include "shell/folders.h"

#include "shell/platform.h"

#include <system_error>

std::filesystem::path folder_to_start_in(StartFolder folder) {
  if (folder == StartFolder::current) {
    return {};
  }
  std::filesystem::path path = folder == StartFolder::access ? tarvos_folder() / "access" : tarvos_folder();
  // What failed here shows itself in the dialog, which says more about it than could be said now.
  std::error_code failed;
  std::filesystem::create_directories(path, failed);
  return path;
}
