#include "sources/render_id_set.h"

namespace sources {

void RenderIDSet::Add(std::uint16_t id) {
    const std::size_t wordStart = id - id % wordBits;
    if (words.empty()) first = wordStart;
    if (wordStart < first) {
        words.insert(words.begin(), (first - wordStart) / wordBits, 0);
        first = wordStart;
    }
    const std::size_t offset = id - first;
    if (offset / wordBits >= words.size()) words.resize(offset / wordBits + 1);
    words[offset / wordBits] |= std::uint64_t{1} << offset % wordBits;
}

}  // namespace sources
