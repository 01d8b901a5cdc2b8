// The effect's parameters, as the user reads them.
#pragma once

#include <span>
#include <string>

#include "command/arguments.h"
#include "plugin/entry.h"

namespace command {

// In the order of `rows`; ends with a line break.
std::string ListParameters(std::span<const parameters::Row> rows, ListingForm form);

}  // namespace command
