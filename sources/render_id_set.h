// A set of node render IDs with a test that costs the same however many there are.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sources {

// One bit an ID, from the smallest that was added to the largest: a set of one object, of which a
// document has thousands, is a few bytes.
class RenderIDSet {
  public:
    void Add(std::uint16_t id);
    bool Contains(std::uint16_t id) const {
        const std::size_t offset = std::size_t{id} - first;  // an ID below the first wraps round
        return offset / wordBits < words.size() &&
               (words[offset / wordBits] >> offset % wordBits & 1U);
    }
    // Calls `visit(std::uint16_t)` for each, in ascending order.
    template <class Visit>
    void ForEach(Visit visit) const {
        for (std::size_t i = 0; i < words.size(); ++i) {
            for (std::uint64_t rest = words[i]; rest != 0; rest &= rest - 1) {
                const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
                visit(static_cast<std::uint16_t>(first + i * wordBits + bit));
            }
        }
    }

  private:
    static constexpr std::size_t wordBits = 64;

    // A multiple of wordBits; meaningless while there are no words.
    std::size_t first = 0;
    std::vector<std::uint64_t> words;
};

}  // namespace sources
