// Nodes hang below nodes and layers below layers in the same way: a parent, and children in the
// order in which they came.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace host {

// Null for an index out of range.
template <class T>
T* At(const std::vector<T*>& objects, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < objects.size()
               ? objects[static_cast<std::size_t>(index)]
               : nullptr;
}

// The end of the list for one that isn't in it.
template <class T>
std::size_t IndexOf(const std::vector<T*>& objects, const T* object) {
    return static_cast<std::size_t>(std::find(objects.begin(), objects.end(), object) -
                                    objects.begin());
}

// At the end when the list is shorter than `index`.
template <class T>
void InsertAt(std::vector<T*>& objects, std::size_t index, T* object) {
    const auto at = static_cast<std::ptrdiff_t>(std::min(index, objects.size()));
    objects.insert(objects.begin() + at, object);
}

constexpr std::size_t atTheEnd = static_cast<std::size_t>(-1);

}  // namespace host
