// Lines out of blocks.

#include "psdfile/cube_lines.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <string_view>

#include "psdfile/cube_words.h"

namespace psdfile {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16;
constexpr std::size_t longestFirstLine = 250;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr char commentMark = '#';

}  // namespace

CubeLines::CubeLines(std::istream& stream) : input(stream.rdbuf()), block(blockSize) {
    if (stream.fail()) input.setstate(std::ios::badbit);
    // A buffer that can't seek leaves `failbit`, with which nothing is read either.
    input.seekg(0);
    Refill();
    const std::string_view text(block.data(), filled);
    if (text.starts_with(byteOrderMark)) lineStart = byteOrderMark.size();
}

// What has been read of the current line moves to the front.
void CubeLines::Refill() {
    std::copy(block.begin() + static_cast<std::ptrdiff_t>(lineStart),
              block.begin() + static_cast<std::ptrdiff_t>(filled), block.begin());
    filled -= lineStart;
    lineStart = 0;
    input.read(block.data() + filled, static_cast<std::streamsize>(block.size() - filled));
    filled += static_cast<std::size_t>(input.gcount());
}

CubeLUT::Status CubeLines::FindSeparator() {
    const std::string_view text(block.data() + lineStart, filled - lineStart);
    const std::size_t end = text.substr(0, longestFirstLine + 1).find_first_of("\r\n");
    if (end == std::string_view::npos) {
        return text.size() > longestFirstLine ? CubeLUT::LineError : CubeLUT::OK;
    }
    if (text[end] == '\r' && !text.substr(end + 1).starts_with('\n')) {
        separator = '\r';
        std::cout << "INFO: This file uses non-compliant line separator \\r (0x0D)\n";
    }
    return CubeLUT::OK;
}

CubeLUT::Status CubeLines::ReadLine(std::span<char>& line) {
    for (;;) {
        char* const begin = block.data() + lineStart;
        char* const end = block.data() + filled;
        const auto size = static_cast<std::size_t>(end - begin);
        auto* lineEnd = static_cast<char*>(std::memchr(begin, separator, size));
        if (lineEnd == nullptr) {
            if (!input.fail()) {
                if (size == block.size()) {
                    if (*begin != commentMark) return CubeLUT::LineError;
                    filled = 1;  // the mark stands for what has been seen of the comment
                }
                Refill();
                continue;
            }
            if (!input.eof()) return CubeLUT::ReadError;
            if (size == 0) return CubeLUT::PrematureEndOfFile;
            lineEnd = end;
        }
        lastLineStart = lineStart;
        lineStart = static_cast<std::size_t>(std::min(lineEnd + 1, end) - block.data());
        if (*begin == commentMark || std::all_of(begin, lineEnd, IsCubeBlank)) continue;
        line = {begin, lineEnd};
        return CubeLUT::OK;
    }
}

}  // namespace psdfile
