// Which frames the user asks for.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace command {

// Their times in the host's ticks fit into 32 bits at the host's frame rate.
constexpr int firstFrame = -999'999;
constexpr int lastFrame = 9'999'999;
// More than this in one list is taken for a slip of the keyboard.
constexpr std::size_t mostFrames = 1'000'000;

// "1-10,20-40x2" means 1 to 10 and every second one of 20 to 40. Numbers may be negative ("-5--1").
// Ascending, each frame once. Throws UsageError.
std::vector<int> ParseFrames(std::string_view list);

}  // namespace command
