// The domain of a .cube table as some grading programs tell it: "LUT_3D_INPUT_RANGE 0.0 1.0", or
// the same of 1D, in place of DOMAIN_MIN and DOMAIN_MAX.
#pragma once

#include <optional>
#include <string>

namespace command {

// Of all three colours; finite, `min` below `max`.
struct InputRange {
    double min = 0.0;
    double max = 1.0;
};

// Looks at the lines before the first row of the table. Where one line has the keyword, with two
// numbers that are a range, it becomes a comment, so that what is left is a plain table. Otherwise
// the text stays as it is.
std::optional<InputRange> TakeInputRange(std::string& text);

}  // namespace command
