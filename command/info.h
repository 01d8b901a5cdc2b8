// What is in a render file, told to the user or to a program.
#pragma once

#include <string>

#include "command/render_file.h"

namespace command {

// For reading; ends with a line break. Text from the file is made safe to show.
std::string DescribeAsText(const Description& file);
// The same as JSON of a fixed shape; what isn't UTF-8 is replaced.
std::string DescribeAsJson(const Description& file);

}  // namespace command
