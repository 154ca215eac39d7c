#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// How every line of the program's files ends.
inline constexpr std::string_view line_end = "\r\n";

/// Replaces the file in one step: the bytes are written aside in the same folder, brought to the disk and
/// renamed over the old file, whose permissions they keep. A crash, a full disk or a kill at any moment
/// leaves the old file or the new one, never a piece. A device is written to as it stands.
/// @throws ClickError "Cannot save …" with the reason; the old file then stands as it was.
void replace_file(const std::filesystem::path& path, std::string_view bytes);

/// The whole file, bytes as they stand. A relative name counts from the current folder.
/// @throws ClickError "File not found: …", or "Cannot read …" with the reason.
[[nodiscard]] std::string read_whole_file(const std::filesystem::path& path);

/// A file's name as a person reads it, in UTF-8.
[[nodiscard]] std::string shown_name(const std::filesystem::path& path);
