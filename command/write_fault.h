// The effect's log entries about a document, with the reason and what to do about it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace command {

// Why an image file is of no use, and what to do about it.
using FaultOfImage = std::function<std::string(const std::string& path)>;

// `entry` is the log's text, "Error writing to NAME." for one; `document` the path that the frame
// goes to; `systemError` the errno value at that time, 0 when none is known.
std::string ExplainEntry(std::string_view entry, const std::string& document, int systemError,
                         const FaultOfImage& faultOfImage);

}  // namespace command
