#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

/// The steps of a hardware test, as three tables of ten lines. All bytes as they stand in the file.
struct TestProfile {
  static constexpr std::size_t steps = 10;
  /// Inside a command it stands for a NUL on the wire.
  static constexpr char nul_stand_in = '\x82';

  using Table = std::array<std::string, steps>;

  Table captions;  ///< a blank one ends the list
  Table commands;  ///< without framing
  Table waits;     ///< after sending, ms

  bool operator==(const TestProfile&) const = default;
};

/// The profile that the hardware test runs, shared by the test and its editor as long as the program runs.
struct CurrentProfile {
  std::filesystem::path testprofilefile;  ///< as it is shown
  TestProfile tables;
};

/// The profile of the start: "c:\tarvos\velltest.txt".
[[nodiscard]] std::filesystem::path default_profile();

/// Reads a profile: ten captions, ten commands, ten waits, a line each.
/// @param profilename a name in "c:\tarvos" means the program's own folder on every platform
/// @throws ClickError naming the file when it is missing, cannot be read or has fewer than 30 lines
[[nodiscard]] TestProfile load_profile(const std::filesystem::path& profilename);

/// Writes a profile in the same order, lines ended by CR LF; an old file is replaced in one step.
/// @throws ClickError when the file cannot be written, or when a text holds a line break
void save_profile(const std::filesystem::path& profilename, const TestProfile& profile);

/// Puts the profile that comes with the program where the default profile is looked for, unless one is
/// there. Says nothing when it cannot.
void provide_default_profile();
