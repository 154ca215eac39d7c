#pragma once

#include "link/dialogs.h"

#include <filesystem>

/// The folder in which a file dialog starts: "c:\tarvos\access" and "c:\tarvos" on Windows, the same folders
/// in the user's home elsewhere. It is created when a dialog first starts there; one that cannot be created
/// is named all the same, and the dialog starts where it can. Empty for StartFolder::current.
[[nodiscard]] std::filesystem::path folder_to_start_in(StartFolder folder);
