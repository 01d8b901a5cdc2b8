// Which implementation stands behind the three zlib calls that the writer makes.
#pragma once

#include <zlib.h>

namespace psdfile {

// Signatures, arguments and return codes are zlib's. What a stream compresses to must be one zlib
// stream (header and checksum included) with the window that deflateInit2_ was asked for.
struct DeflateFunctions {
    int (*deflateInit2_)(z_streamp stream, int level, int method, int windowBits, int memLevel,
                         int strategy, const char* version, int streamSize);
    int (*deflate)(z_streamp stream, int flush);
    int (*deflateEnd)(z_streamp stream);
};

// zlib's own three.
DeflateFunctions ZlibDeflateFunctions();

// The table in use; zlib's at the start of the program.
DeflateFunctions CurrentDeflateFunctions();

// Puts `functions` in use for every channel begun from now on, in the whole process, and returns
// the table that was in use before. No pointer may be null. Not locked: don't call it while
// another thread writes a document.
DeflateFunctions SetDeflateFunctions(const DeflateFunctions& functions);

}  // namespace psdfile
