#include "simulator/fault.h"

#include <algorithm>

namespace readersim {
namespace {

constexpr char nak = '\x15';

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

/// Does one fault to the answer. False when the answer has nothing of the kind that it spoils.
bool apply(Answer& answer, const Fault& fault, Random& random) {
  auto& bytes = answer.bytes;
  const auto at = static_cast<std::size_t>(std::max(fault.n, 1) - 1);
  switch (fault.kind) {
    case Fault::Kind::silent:
      bytes.clear();
      return true;
    case Fault::Kind::drop_ack:
      if (!answer.has_ack || bytes.empty()) {
        return false;
      }
      bytes.erase(bytes.begin());
      answer.has_ack = false;
      return true;
    case Fault::Kind::wrong_ack:
      if (!answer.has_ack || bytes.empty()) {
        return false;
      }
      bytes.front().byte = nak;
      return true;
    case Fault::Kind::cut:
      bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(std::max(fault.n, 0))));
      return true;
    case Fault::Kind::garbage:
      insert(answer, 0, random_bytes(fault.n, random));
      return true;
    case Fault::Kind::garbage_at:
      insert(answer, at, random_bytes(fault.amount, random));
      return true;
    case Fault::Kind::double_byte:
      if (at >= bytes.size()) {
        return false;
      }
      bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes[at]);
      return true;
    case Fault::Kind::pause:
      if (at >= bytes.size()) {
        return false;
      }
      bytes[at].silence += std::chrono::milliseconds{fault.amount};
      return true;
    case Fault::Kind::other_address:
      if (!answer.address_at) {
        return false;
      }
      bytes.at(*answer.address_at).byte = static_cast<char>(fault.n + 0x80);
      return true;
    case Fault::Kind::late:
      if (bytes.empty()) {
        return false;
      }
      bytes.front().silence += std::chrono::milliseconds{fault.n};
      return true;
    case Fault::Kind::hang_up:
      answer.hang_up_before = std::min(at, bytes.size());
      return true;
    case Fault::Kind::mishear:
      return true;
  }
  return false;
}

// What changes single bytes of the true answer comes before what puts bytes in or takes them out,
// and the silences come last, so that faults add up in the same way whatever order they were given in.
int rank(Fault::Kind kind) {
  switch (kind) {
    case Fault::Kind::other_address:
      return 0;
    case Fault::Kind::wrong_ack:
      return 1;
    case Fault::Kind::double_byte:
      return 2;
    case Fault::Kind::garbage_at:
      return 3;
    case Fault::Kind::drop_ack:
      return 4;
    case Fault::Kind::garbage:
      return 5;
    case Fault::Kind::cut:
      return 6;
    case Fault::Kind::silent:
      return 7;
    case Fault::Kind::pause:
      return 8;
    default:
      return 9;
  }
}

}  // namespace

const std::vector<FaultTraits>& all_faults() {
  static const std::vector<FaultTraits> table{
      {Fault::Kind::silent, "silent", 0, "silent           no answer at all"},
      {Fault::Kind::drop_ack, "drop-ack", 0, "drop-ack         no acknowledge; what follows it still comes"},
      {Fault::Kind::wrong_ack, "wrong-ack", 0, "wrong-ack        0x15 in place of the acknowledge"},
      {Fault::Kind::cut, "cut", 1, "cut N            only the first N bytes come"},
      {Fault::Kind::garbage, "garbage", 1, "garbage N        N random bytes before the answer"},
      {Fault::Kind::garbage_at, "garbage-at", 2, "garbage-at N C   C random bytes before byte N"},
      {Fault::Kind::double_byte, "double", 1, "double N         byte N comes twice"},
      {Fault::Kind::pause, "pause", 2, "pause N MS       a pause of MS milliseconds before byte N"},
      {Fault::Kind::other_address, "other-address", 1, "other-address A  poll replies bear address A"},
      {Fault::Kind::mishear, "mishear", 1, "mishear A        answers frames for address A, not its own"},
      {Fault::Kind::late, "late", 1, "late MS          the answer comes MS milliseconds late"},
      {Fault::Kind::hang_up, "hang-up", 1, "hang-up N        the line hangs up before byte N"},
  };
  return table;
}

const FaultTraits& traits(Fault::Kind kind) {
  return *std::find_if(all_faults().begin(), all_faults().end(),
                       [&](const FaultTraits& each) { return each.kind == kind; });
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
  std::stable_sort(order.begin(), order.end(),
                   [](const Fault* a, const Fault* b) { return rank(a->kind) < rank(b->kind); });
  std::string done;
  for (Fault* fault : order) {
    // What a reader mishears is settled before it answers, and counted there.
    if (fault->kind == Fault::Kind::mishear || fault->times == 0 || !apply(answer, *fault, random)) {
      continue;
    }
    fault->times -= fault->times > 0 ? 1 : 0;
    done.append(done.empty() ? "" : ", ").append(traits(fault->kind).name);
  }
  std::erase_if(faults, [](const Fault& fault) { return fault.times == 0; });
  return done;
}

}  // namespace readersim
