#pragma once

#include "simulator/fault.h"
#include "simulator/reader.h"
#include "simulator/verdict.h"

#include <vector>

namespace readersim {

/// What goes on the wire for a verdict, empty when nothing does. On a network: ACK alone, or ACK, STX,
/// data, ETX; for a poll ACK, address byte, state, data, ETX. On a plain line: data, CR, or nothing.
/// Data that end in the end character stand as they are, so that it and the end make a pair.
[[nodiscard]] Answer answer_for(const Reader& reader, const Verdict& verdict, bool network);

/// What the host hears when several readers answer the same frame: each byte the AND of theirs.
[[nodiscard]] Answer collide(const std::vector<Answer>& answers);

}  // namespace readersim
