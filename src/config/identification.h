#pragma once

#include "link/dialogs.h"
#include "link/reader_link.h"

#include <optional>
#include <string>

/// Asks the reader for its identification, as "Reader Identification" does: first whether it is there,
/// then for the text itself, so that the request goes out twice.
/// @return the text as the reader sent it, also when it was cut after 3 characters or more; nothing when
///     the request failed, which a box has then told.
[[nodiscard]] std::optional<std::string> read_identification(ReaderLink& link, Dialogs& dialogs);
