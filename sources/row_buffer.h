// One row of samples on the host's heap, zeroed.
#pragma once

#include <maxheap.h>

#include <cstddef>
#include <memory>
#include <new>

namespace sources {

struct FreeRow {
    void operator()(void* memory) const { MAX_free(memory); }
};

template <class Sample>
using RowBuffer = std::unique_ptr<Sample[], FreeRow>;

// Throws std::bad_alloc when the host has no memory.
template <class Sample>
RowBuffer<Sample> MakeRow(int width) {
    // A buffer that is asked for has an address, also for a bitmap without pixels.
    const std::size_t samples = width > 0 ? static_cast<std::size_t>(width) : 1;
    void* memory = MAX_calloc(samples, sizeof(Sample));
    if (!memory) throw std::bad_alloc();
    return RowBuffer<Sample>(static_cast<Sample*>(memory));
}

// A document holds thousands of sources and asks each for one depth: a row is made when it is first
// asked for. Throws as MakeRow does.
template <class Sample>
Sample* RowOf(RowBuffer<Sample>& row, int width) {
    if (!row) row = MakeRow<Sample>(width);
    return row.get();
}

}  // namespace sources
