#include "simulator/fault.h"

#include "simulator/wire.h"

#include <algorithm>
#include <array>

namespace readersim {
namespace {

std::vector<Answer::Byte> random_bytes(int count, Random& random) {
  std::vector<Answer::Byte> bytes;
  bytes.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    bytes.push_back({static_cast<char>(random() & 0xFFU)});
  }
  return bytes;
}

void insert(Answer& answer, std::size_t at, const std::vector<Answer::Byte>& extra) {
  at = std::min(at, answer.bytes.size());
  answer.bytes.insert(answer.bytes.begin() + static_cast<std::ptrdiff_t>(at), extra.begin(), extra.end());
  if (answer.has_ack && at == 0 && !extra.empty()) {
    answer.has_ack = false;
  }
}

std::size_t place(const Fault& fault) {
  return static_cast<std::size_t>(std::max(fault.n, 1) - 1);
}

bool silence(Answer& answer, const Fault&, Random&) {
  answer.bytes.clear();
  return true;
}

bool drop_ack(Answer& answer, const Fault&, Random&) {
  if (!answer.has_ack || answer.bytes.empty()) {
    return false;
  }
  answer.bytes.erase(answer.bytes.begin());
  answer.has_ack = false;
  return true;
}

bool wrong_ack(Answer& answer, const Fault&, Random&) {
  if (!answer.has_ack || answer.bytes.empty()) {
    return false;
  }
  answer.bytes.front().byte = nak;
  return true;
}

bool cut(Answer& answer, const Fault& fault, Random&) {
  answer.bytes.resize(std::min(answer.bytes.size(), static_cast<std::size_t>(std::max(fault.n, 0))));
  return true;
}

bool garbage(Answer& answer, const Fault& fault, Random& random) {
  insert(answer, 0, random_bytes(fault.n, random));
  return true;
}

bool garbage_at(Answer& answer, const Fault& fault, Random& random) {
  insert(answer, place(fault), random_bytes(fault.amount, random));
  return true;
}

bool double_byte(Answer& answer, const Fault& fault, Random&) {
  auto& bytes = answer.bytes;
  const std::size_t at = place(fault);
  if (at >= bytes.size()) {
    return false;
  }
  bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes[at]);
  return true;
}

bool pause(Answer& answer, const Fault& fault, Random&) {
  const std::size_t at = place(fault);
  if (at >= answer.bytes.size()) {
    return false;
  }
  answer.bytes[at].silence += std::chrono::milliseconds{fault.amount};
  return true;
}

bool other_address(Answer& answer, const Fault& fault, Random&) {
  if (!answer.address_at) {
    return false;
  }
  answer.bytes.at(*answer.address_at).byte = address_byte(fault.n);
  return true;
}

bool late(Answer& answer, const Fault& fault, Random&) {
  if (answer.bytes.empty()) {
    return false;
  }
  answer.bytes.front().silence += std::chrono::milliseconds{fault.n};
  return true;
}

bool hang_up(Answer& answer, const Fault& fault, Random&) {
  answer.hang_up_before = std::min(place(fault), answer.bytes.size());
  return true;
}

// What changes single bytes of the true answer ranks before what puts bytes in or takes them out,
// and the silences come last, so that faults add up in the same way whatever order they were given in.
// What a reader mishears is settled before it answers, and counted there.
using Kind = Fault::Kind;
constexpr std::array table{
    FaultTraits{Kind::silent, "silent", 0, "silent           no answer at all", 7, silence},
    FaultTraits{Kind::drop_ack, "drop-ack", 0, "drop-ack         no acknowledge; what follows it still comes",
                4, drop_ack},
    FaultTraits{Kind::wrong_ack, "wrong-ack", 0, "wrong-ack        0x15 in place of the acknowledge", 1,
                wrong_ack},
    FaultTraits{Kind::cut, "cut", 1, "cut N            only the first N bytes come", 6, cut},
    FaultTraits{Kind::garbage, "garbage", 1, "garbage N        N random bytes before the answer", 5, garbage},
    FaultTraits{Kind::garbage_at, "garbage-at", 2, "garbage-at N C   C random bytes before byte N", 3,
                garbage_at},
    FaultTraits{Kind::double_byte, "double", 1, "double N         byte N comes twice", 2, double_byte},
    FaultTraits{Kind::pause, "pause", 2, "pause N MS       a pause of MS milliseconds before byte N", 8,
                pause},
    FaultTraits{Kind::other_address, "other-address", 1, "other-address A  poll replies bear address A", 0,
                other_address},
    FaultTraits{Kind::mishear, "mishear", 1, "mishear A        answers frames for address A, not its own", 9,
                nullptr},
    FaultTraits{Kind::late, "late", 1, "late MS          the answer comes MS milliseconds late", 9, late},
    FaultTraits{Kind::hang_up, "hang-up", 1, "hang-up N        the line hangs up before byte N", 9, hang_up},
};

constexpr bool in_order() {
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (static_cast<std::size_t>(table.at(i).kind) != i) {
      return false;
    }
  }
  return true;
}
static_assert(in_order(), "the table follows the enumeration");

}  // namespace

std::span<const FaultTraits> all_faults() {
  return table;
}

const FaultTraits& traits(Fault::Kind kind) {
  return table.at(static_cast<std::size_t>(kind));
}

std::string describe(const Fault& fault) {
  const FaultTraits& kind = traits(fault.kind);
  std::string text{kind.name};
  if (kind.numbers > 0) {
    text += ' ' + std::to_string(fault.n);
  }
  if (kind.numbers > 1) {
    text += ' ' + std::to_string(fault.amount);
  }
  if (fault.times < 0) {
    return text + ", every answer";
  }
  return text + ", " + std::to_string(fault.times) + (fault.times == 1 ? " answer" : " answers");
}

std::string Answer::text() const {
  std::string result;
  for (const Byte& each : bytes) {
    result += each.byte;
  }
  return result;
}

std::string spoil(Answer& answer, std::vector<Fault>& faults, Random& random) {
  std::vector<Fault*> order;
  order.reserve(faults.size());
  for (Fault& fault : faults) {
    order.push_back(&fault);
  }
  std::stable_sort(order.begin(), order.end(), [](const Fault* a, const Fault* b) {
    return traits(a->kind).rank < traits(b->kind).rank;
  });
  std::string done;
  for (Fault* fault : order) {
    const FaultTraits& kind = traits(fault->kind);
    if (kind.apply == nullptr || fault->times == 0 || !kind.apply(answer, *fault, random)) {
      continue;
    }
    fault->times -= fault->times > 0 ? 1 : 0;
    done.append(done.empty() ? "" : ", ").append(kind.name);
  }
  std::erase_if(faults, [](const Fault& fault) { return fault.times == 0; });
  return done;
}

}  // namespace readersim
