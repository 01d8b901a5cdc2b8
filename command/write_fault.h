// The effect's log entries about a document, with the reason and what to do about it.
#pragma once

#include <string>
#include <string_view>

namespace command {

// `entry` is the log's text, "Error writing to NAME." for one; `document` the path that the frame
// goes to; `systemError` the errno value at that time, 0 when none is known.
std::string ExplainEntry(std::string_view entry, const std::string& document, int systemError);

}  // namespace command
