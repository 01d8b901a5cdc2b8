// What the system says of a fault, in UTF-8.
#pragma once

#include <string>
#include <system_error>

namespace command {

// Without the line break and the point that the system may put behind it.
std::string SystemMessage(const std::error_code& fault);

}  // namespace command
