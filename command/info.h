// What is in a render file, told to the user or to a program.
#pragma once

#include <optional>
#include <string>

#include "command/passes.h"
#include "command/render_file.h"

namespace command {

// What is to be told.
struct RenderInfo {
    const Description& file;
    // Nothing when the file has no picture; `fault` then says why.
    std::optional<PassPlan> plan;
    std::string fault;
};

// `file` outlives the result.
RenderInfo Inform(const Description& file);
// The same, with what only the pixels show. Pixels that can't be read are a warning.
RenderInfo Inform(RenderFile& file);

// For reading; ends with a line break. Text from the file is made safe to show.
std::string DescribeAsText(const RenderInfo& info);
// The same as JSON of a fixed shape; what isn't UTF-8 is replaced.
std::string DescribeAsJson(const RenderInfo& info);

}  // namespace command
