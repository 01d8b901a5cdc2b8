// Lists of frames, and names with a place for the frame number. A NUL stands between the two.
#include <algorithm>
#include <cstdint>
#include <string>

#include "command/failure.h"
#include "command/frame_list.h"
#include "command/frame_pattern.h"

namespace {

void ReadList(const std::string& list) {
    try {
        const auto frames = command::ParseFrames(list);
        const bool sorted = std::is_sorted(frames.begin(), frames.end());
        const bool repeats = std::adjacent_find(frames.begin(), frames.end()) != frames.end();
        if (frames.empty() || !sorted || repeats) __builtin_trap();
    } catch (const command::UsageError&) {
        // As it should be.
    }
}

void ReadPattern(const std::string& path) {
    try {
        const auto pattern = command::FindFramePattern(path);
        if (!pattern) return;
        if (pattern->before + pattern->text + pattern->after != path) __builtin_trap();
        pattern->PathOf(-12);
        command::WithoutFramePattern(*pattern);
    } catch (const command::UsageError&) {
        // As it should be.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::size_t middle = std::min(input.find('\0'), input.size());
    ReadList(input.substr(0, middle));
    ReadPattern(input.substr(std::min(middle + 1, input.size())));
    return 0;
}
