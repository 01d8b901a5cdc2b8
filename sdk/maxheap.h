// The host's heap. What the host may free comes from here.
#pragma once

#include <cstddef>
#include <new>

void* MAX_malloc(std::size_t size);
// Zeroed; null when out of memory.
void* MAX_calloc(std::size_t count, std::size_t size);
void MAX_free(void* memory);

// Base of the classes whose objects the host destroys: they lie in its heap.
class MaxHeapOperators {
  public:
    static void* operator new(std::size_t size) {
        if (void* memory = MAX_malloc(size)) return memory;
        throw std::bad_alloc();
    }
    static void operator delete(void* memory) { MAX_free(memory); }
};
