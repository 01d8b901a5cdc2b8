// The host's heap. What the host may free comes from here.
#pragma once

#include <cstddef>

void* MAX_malloc(std::size_t size);
// Zeroed; null when out of memory.
void* MAX_calloc(std::size_t count, std::size_t size);
void MAX_free(void* memory);
