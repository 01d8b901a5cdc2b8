#include "command/id_index.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace command {
namespace {

constexpr std::size_t leastSlots = 16;

}  // namespace

IdIndex::IdIndex(std::span<const std::uint32_t> ids) {
    Grow(std::bit_ceil(std::max(leastSlots, 2 * ids.size())));
    for (const std::uint32_t id : ids)
        Add(id);
}

std::uint32_t IdIndex::Add(std::uint32_t id) {
    if (const std::uint32_t number = Find(id); number != none) return number;
    if (2 * (count + 1) > slots.size()) Grow(std::max(leastSlots, 2 * slots.size()));
    std::size_t at = HomeOf(id);
    while (slots[at].number != none)
        at = (at + 1) & (slots.size() - 1);
    slots[at] = {id, static_cast<std::uint32_t>(count)};
    return static_cast<std::uint32_t>(count++);
}

void IdIndex::Grow(std::size_t slotCount) {
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(slotCount));
    shift = 32 - std::countr_zero(slotCount);
    for (const Slot& slot : old) {
        if (slot.number == none) continue;
        std::size_t at = HomeOf(slot.id);
        while (slots[at].number != none)
            at = (at + 1) & (slots.size() - 1);
        slots[at] = slot;
    }
}

}  // namespace command
