// The lines of a .cube file, read in blocks: of a file of hundreds of megabytes there is one block
// in memory, and no line is copied.
#pragma once

#include <cstddef>
#include <istream>
#include <span>
#include <vector>

#include "psdfile/cube_lut.h"

namespace psdfile {

class CubeLines {
  public:
    // From the very start of what is behind `stream`, whose state stays as it is: a stream that has
    // failed gives no line, and none of its exceptions is thrown.
    explicit CubeLines(std::istream& stream);

    // Call it once, before the first line: it takes the line separator from the first line's end,
    // and tells of a carriage return alone on the standard output.
    CubeLUT::Status FindSeparator();

    // The next line that isn't empty and doesn't begin with "#", without its separator; of "\r\n"
    // the "\r" stays. It may be changed in place, and holds until the next call. A line of blanks
    // is empty. A line of 64 KB or more is a LineError, unless it is a comment.
    CubeLUT::Status ReadLine(std::span<char>& line);

    // The next ReadLine gives the last line again.
    void RepeatLine() { lineStart = lastLineStart; }

  private:
    void Refill();

    std::istream input;
    std::vector<char> block;
    std::size_t filled = 0;
    std::size_t lineStart = 0;
    std::size_t lastLineStart = 0;
    char separator = '\n';
};

}  // namespace psdfile
