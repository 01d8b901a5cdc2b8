// The host's heap is the C library's.
#include <maxheap.h>

#include <cstdlib>

void* MAX_malloc(std::size_t size) {
    return std::malloc(size);
}
void* MAX_calloc(std::size_t count, std::size_t size) {
    return std::calloc(count, size);
}
void MAX_free(void* memory) {
    std::free(memory);
}
