#include "simulator/answer.h"

#include "simulator/wire.h"

#include <algorithm>
#include <string_view>

namespace readersim {
namespace {

Answer of(std::string_view text) {
  Answer answer;
  for (const char byte : text) {
    answer.bytes.push_back({byte});
  }
  return answer;
}

}  // namespace

Answer answer_for(const Reader& reader, const Verdict& verdict, bool network) {
  Answer answer;
  switch (verdict.kind) {
    case Verdict::Kind::refused:
      break;
    case Verdict::Kind::done:
      answer = network ? of({&ack, 1}) : Answer{};
      break;
    case Verdict::Kind::data:
      answer = network ? of(std::string{ack, stx} + verdict.data + etx) : of(verdict.data + cr);
      break;
    case Verdict::Kind::poll:
      answer = of(std::string{ack, address_byte(reader.address), verdict.poll_state} + verdict.data + etx);
      answer.address_at = 1;
      break;
  }
  answer.has_ack = network && !answer.bytes.empty();
  answer.meaning = verdict.kind == Verdict::Kind::done ? "acknowledge" : verdict.meaning;
  return answer;
}

Answer collide(const std::vector<Answer>& answers) {
  Answer result;
  for (const Answer& each : answers) {
    if (each.bytes.size() > result.bytes.size()) {
      result.bytes.resize(each.bytes.size(), {'\xff'});
    }
    for (std::size_t i = 0; i < each.bytes.size(); ++i) {
      result.bytes[i].byte = static_cast<char>(result.bytes[i].byte & each.bytes[i].byte);
      result.bytes[i].silence = std::max(result.bytes[i].silence, each.bytes[i].silence);
    }
  }
  result.baud = answers.front().baud;
  result.meaning = "collision of " + std::to_string(answers.size()) + " answers";
  return result;
}

}  // namespace readersim
