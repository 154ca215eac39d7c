#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace readersim {

enum class Family { vell, orin, orinta, ferro_kesh, glint_kesh, quor };

inline constexpr std::array all_families{Family::vell,       Family::orin,       Family::orinta,
                                         Family::ferro_kesh, Family::glint_kesh, Family::quor};

/// A set of families, for the tables that say which family has what.
class Families {
 public:
  template <typename... F>
  constexpr explicit Families(F... family) : bits_{((1U << static_cast<unsigned>(family)) | ... | 0U)} {}
  [[nodiscard]] constexpr bool has(Family family) const {
    return (bits_ >> static_cast<unsigned>(family) & 1U) != 0;
  }

 private:
  unsigned bits_;
};

inline constexpr Families every_family{Family::vell,       Family::orin,       Family::orinta,
                                       Family::ferro_kesh, Family::glint_kesh, Family::quor};
/// The stand-alone access readers: an access list, schedules, an access log.
inline constexpr Families access_families{Family::orin, Family::orinta};
/// The readers that collect what they read.
inline constexpr Families collecting_families{Family::ferro_kesh, Family::glint_kesh, Family::quor};
inline constexpr Families kesh_families{Family::ferro_kesh, Family::glint_kesh};
inline constexpr Families orinta_only{Family::orinta};
inline constexpr Families ferro_only{Family::ferro_kesh};
inline constexpr Families glint_only{Family::glint_kesh};
inline constexpr Families quor_only{Family::quor};
/// The readers that keep records, of accesses or of what they collected, at a record length.
inline constexpr Families record_families{Family::orin, Family::orinta, Family::ferro_kesh,
                                          Family::glint_kesh, Family::quor};
/// Whoever keeps records has a clock to date them by.
inline constexpr Families clock_families = record_families;
/// The readers that can be told to send each record on a plain line too.
inline constexpr Families rs232_logging_families{Family::orin, Family::ferro_kesh, Family::glint_kesh};
inline constexpr Families sense_families{Family::vell, Family::orin, Family::orinta};
inline constexpr Families keyboard_families{Family::vell, Family::ferro_kesh, Family::glint_kesh,
                                            Family::quor};
inline constexpr Families relay_families{Family::vell, Family::orin, Family::orinta, Family::quor};
inline constexpr Families display_families{Family::vell, Family::orinta, Family::ferro_kesh, Family::quor};

/// What a family is made with: all that tells one from another apart from its commands.
struct FamilyTraits {
  Family family;
  std::string_view name;      ///< as printed and as --family takes it, for example "Ferro Kesh"
  std::string_view firmware;  ///< the first part of the identification string
  char operating_mode;        ///< the mode digit it leaves the factory in
  std::string_view modes;     ///< the mode digits it accepts: 1 Vell, 2 Kesh, 3 Orin, 4 Orinta, 5 Accum
  std::size_t record_length;  ///< factory record length, characters
  std::size_t least_record;   ///< shortest record length it accepts
  std::size_t longest_record;
};

[[nodiscard]] const FamilyTraits& traits(Family family);
/// The family of that name, whatever the case of its letters; nothing when there is none.
[[nodiscard]] std::optional<Family> family_named(std::string_view name);
/// The identification string a reader answers to "V": 28 to 34 characters, serial number included.
[[nodiscard]] std::string identification(Family family, int serial);
/// The name of an operating mode digit, "Vell" for '1'; "?" for a digit that is no mode.
[[nodiscard]] std::string_view mode_name(char digit);

}  // namespace readersim
