#include "command/frame_pattern.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "command/failure.h"

namespace command {
namespace {

constexpr int widestNumber = 20;

struct Span {
    std::size_t start = 0;
    std::size_t length = 0;
    int width = 1;
};

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// The pattern that begins at `start`; a length of 0 when none does.
Span PatternAt(std::string_view path, std::size_t start) {
    std::size_t end = start;
    const auto width = [](std::size_t count) {
        return static_cast<int>(std::min<std::size_t>(count, widestNumber));
    };
    if (path[start] == '#') {
        while (end < path.size() && path[end] == '#')
            ++end;
        return {start, end - start, width(end - start)};
    }
    const bool percent = path[start] == '%';
    if (percent) {
        ++end;
    } else if (path.substr(start).starts_with("$F")) {
        end += 2;
    } else {
        return {};
    }
    std::size_t digits = 0;
    for (; end < path.size() && IsDigit(path[end]) && digits < 1000; ++end) {
        digits = digits * 10 + static_cast<std::size_t>(path[end] - '0');
    }
    if (percent) {
        if (end == path.size() || path[end] != 'd') return {};
        ++end;
    }
    return {start, end - start, std::max(1, width(digits))};
}

std::size_t ExtensionStart(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? name.size() : dot;
}

bool IsSeparator(char letter) {
    return letter == '.' || letter == '_' || letter == '-';
}

}  // namespace

std::string FramePattern::PathOf(int frame) const {
    std::array<char, widestNumber + 1> number{};
    const int length = std::snprintf(number.data(), number.size(), "%0*d", width, frame);
    return before + std::string(number.data(), static_cast<std::size_t>(length)) + after;
}

std::optional<FramePattern> FindFramePattern(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    std::optional<Span> found;
    for (std::size_t i = slash == std::string::npos ? 0 : slash + 1; i < path.size(); ++i) {
        const Span span = PatternAt(path, i);
        if (span.length == 0) continue;
        if (found) {
            throw UsageError(path +
                             ": the name holds more than one place for the frame number; "
                             "leave one of them");
        }
        found = span;
        i += span.length - 1;
    }
    if (!found) return std::nullopt;
    return FramePattern{path.substr(0, found->start), found->width,
                        path.substr(found->start + found->length),
                        path.substr(found->start, found->length)};
}

bool IsBeforeExtension(const FramePattern& pattern) {
    return ExtensionStart(pattern.after) == 0;
}

std::string WithoutFramePattern(const FramePattern& pattern) {
    if (IsBeforeExtension(pattern)) return pattern.before + pattern.after;
    const std::string& after = pattern.after;
    std::string separator;
    std::string base = pattern.before;
    if (!base.empty() && IsSeparator(base.back()) && after.front() == base.back()) {
        separator = base.back();
        base.pop_back();
    }
    const std::size_t extension = ExtensionStart(after);
    return base + after.substr(0, extension) + separator + after.substr(extension);
}

}  // namespace command
