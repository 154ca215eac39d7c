#pragma once

#include "simulator/time_point.h"

#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// What goes wrong with the next answers of a reader. `n` counts the bytes of an answer from 1.
struct Fault {
  enum class Kind {
    silent,         ///< no answer at all
    drop_ack,       ///< the acknowledge is missing, what follows it still comes
    wrong_ack,      ///< NAK (0x15) in place of the acknowledge
    cut,            ///< only the first n bytes come (0 to ...)
    garbage,        ///< n random bytes before the answer
    garbage_at,     ///< `amount` random bytes before byte n
    double_byte,    ///< byte n comes twice
    pause,          ///< `amount` milliseconds of silence before byte n
    other_address,  ///< poll replies bear the address byte of reader n
    mishear,        ///< takes frames for reader n as its own, and its own for another's
    late,           ///< the answer comes n milliseconds later than it should
    hang_up,        ///< the line hangs up before byte n (1: before the answer)
  };
  Kind kind;
  int n = 0;
  int amount = 0;
  int times = 1;  ///< how many answers it still spoils; -1 for all to come
};

/// An answer on its way: its bytes, each with the silence before it.
struct Answer {
  struct Byte {
    char byte;
    TimePoint silence{0};
  };
  std::vector<Byte> bytes;
  bool has_ack = false;                       ///< the first byte is the acknowledge
  std::optional<std::size_t> address_at;      ///< where a poll reply bears the reader's address byte
  std::optional<std::size_t> hang_up_before;  ///< set by a fault: the line goes before that byte
  int baud = 9600;                            ///< what it is sent at
  std::string meaning;                        ///< for people

  [[nodiscard]] std::string text() const;
};

/// Random bytes that are the same in every run and on every platform with the same seed.
using Random = std::mt19937;

/// The kinds as the console takes them, each with what it needs, "cut N", "pause N MS", and with what
/// it does.
struct FaultTraits {
  Fault::Kind kind;
  std::string_view name;
  int numbers;             ///< how many numbers it takes before the count of answers
  std::string_view usage;  ///< "cut N        only the first N bytes of the answer come"
  int rank;                ///< the order in which faults spoil one answer, lowest first
  /// Does one fault to the answer. False when the answer has nothing of the kind that it spoils.
  /// nullptr for what is settled before there is an answer.
  bool (*apply)(Answer&, const Fault&, Random&);
};
/// In the order of the kinds.
[[nodiscard]] std::span<const FaultTraits> all_faults();
[[nodiscard]] const FaultTraits& traits(Fault::Kind kind);
/// "drop-ack, 3 answers" and the like.
[[nodiscard]] std::string describe(const Fault& fault);

/// Applies every fault that has times left, in a fixed order, and counts them down. Returns what
/// was done, for people: "" when nothing was.
std::string spoil(Answer& answer, std::vector<Fault>& faults, Random& random);

}  // namespace readersim
