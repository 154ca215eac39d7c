#pragma once

#include <filesystem>
#include <string>

// What differs by platform here: platform_unix.cpp and platform_windows.cpp, one of which is built.

/// The folder that all of the program's files start from.
[[nodiscard]] std::filesystem::path tarvos_folder();

/// Brings what was written to an open file to the disk. @return nothing, or why the disk refuses.
[[nodiscard]] std::string sync_to_disk(int file_handle);
