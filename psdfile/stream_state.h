// What a stream knows about the document that is written to it. Both words live in the stream
// itself, so the same document can be written twice, once in each format.
#pragma once

#include <ostream>

namespace psdfile {

// Non-zero selects the large format (PSB) for everything written to the stream. 0 on a new stream.
long& PSBMode(std::ios_base& stream);

// 1 once CheckFileSize has stopped the stream. 0 on a new stream; clear() doesn't reset it.
long& FileTooLarge(std::ios_base& stream);

// Stops a PSD at 2 GB: at 2147483648 bytes or more, without PSB mode, sets FileTooLarge and the
// stream's failbit. Never throws while the stream's exception mask is empty.
void CheckFileSize(std::ostream& stream);

}  // namespace psdfile
