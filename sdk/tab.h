// The host's array.
#pragma once

#include <cstddef>
#include <vector>

template <class T>
class Tab {
  public:
    int Count() const { return static_cast<int>(items_.size()); }
    void SetCount(int count) { items_.resize(static_cast<std::size_t>(count)); }
    // The index of the first new item.
    int Append(int count, const T* items) {
        const int first = Count();
        for (int i = 0; i < count; ++i)
            items_.push_back(items[i]);
        return first;
    }
    T& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
    const T& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

  private:
    std::vector<T> items_;
};
