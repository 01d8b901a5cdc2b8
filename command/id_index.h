// Numbers for ids: the lookup that runs for every rank of every pixel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace command {

// Gives ids the numbers 0, 1, 2... in the order in which they are added.
class IdIndex {
  public:
    static constexpr std::uint32_t none = 0xffffffff;

    IdIndex() = default;
    // The number of ids[i] is i where the ids are distinct.
    explicit IdIndex(std::span<const std::uint32_t> ids);

    // The id's number, a new one if it hasn't one yet.
    std::uint32_t Add(std::uint32_t id);
    // `none` for an id that wasn't added. Allocates nothing.
    [[nodiscard]] std::uint32_t Find(std::uint32_t id) const {
        if (slots.empty()) return none;
        std::size_t at = HomeOf(id);
        // The id first: most lookups end at the first slot. A free slot that happens to show the id
        // has the right number, too.
        while (slots[at].id != id && slots[at].number != none)
            at = (at + 1) & (slots.size() - 1);
        return slots[at].number;
    }
    [[nodiscard]] std::size_t Size() const { return count; }

  private:
    struct Slot {
        std::uint32_t id = 0;
        // `none`: the slot is free.
        std::uint32_t number = none;
    };

    [[nodiscard]] std::size_t HomeOf(std::uint32_t id) const {
        // The multiplication spreads small whole numbers too, by the golden ratio.
        return static_cast<std::size_t>(id * 0x9e3779b1U >> shift);
    }
    void Grow(std::size_t slotCount);

    // A power of two of them, at most half of them in use; or none.
    std::vector<Slot> slots;
    std::size_t count = 0;
    int shift = 32;
};

}  // namespace command
