#pragma once

#include "link/reader_link.h"

#include <string>
#include <vector>

/// Sends commands one by one and stops at the first that is not accepted; a box has then told why.
/// @return whether all were accepted.
bool send_run(ReaderLink& link, const std::vector<std::string>& commands);
