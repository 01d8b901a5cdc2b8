// Text from files and libraries, made safe to show on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace host {

// One line: control characters become blanks (runs of them one blank), none at the ends.
std::string Printable(std::string_view text);

}  // namespace host
