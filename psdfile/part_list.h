// Sequences of parts: one that owns its items, one that shares them.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "psdfile/part.h"

namespace psdfile {

// Owns its items. A copy holds copies of them, each of its own class.
class PSDPartList : public PSDPart {
  public:
    using PSDPart::PSDPart;
    PSDPartList() = default;
    PSDPartList(const PSDPartList& other);
    PSDPartList& operator=(const PSDPartList&) = delete;
    ~PSDPartList() override;

    // Makes a T at the end. The reference stays good until Clear.
    template <class T, class... Arguments>
    T& Add(Arguments&&... arguments) {
        return Insert<T>(items.size(), std::forward<Arguments>(arguments)...);
    }

    // Makes a T before all others: a list built from the top layer down is written bottom first.
    template <class T, class... Arguments>
    T& AddFront(Arguments&&... arguments) {
        return Insert<T>(0, std::forward<Arguments>(arguments)...);
    }

    [[nodiscard]] std::size_t Count() const { return items.size(); }
    [[nodiscard]] PSDPart& Item(std::size_t index) const { return *items[index].part; }
    // For lists whose items are all of one class.
    template <class T>
    [[nodiscard]] T& ItemAs(std::size_t index) const {
        return static_cast<T&>(Item(index));
    }
    void Clear();

    void WriteBody(std::ostream& stream) override;

  private:
    struct Entry {
        PSDPart* part;  // owned
        PSDPart* (*copy)(const PSDPart& part);
    };

    template <class T, class... Arguments>
    T& Insert(std::size_t index, Arguments&&... arguments) {
        auto part = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        constexpr auto copy = [](const PSDPart& original) -> PSDPart* {
            return new T(static_cast<const T&>(original));
        };
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(index), Entry{part.get(), copy});
        return *part.release();
    }

    std::vector<Entry> items;
};

// Shares its items; a copy has the same ones.
class SharedPSDPartList : public PSDPart {
  public:
    using PSDPart::PSDPart;
    SharedPSDPartList() = default;

    // The part must not be empty.
    void Add(boost::shared_ptr<PSDPart> part) { items.push_back(std::move(part)); }
    void AddFront(boost::shared_ptr<PSDPart> part) { items.insert(items.begin(), std::move(part)); }
    [[nodiscard]] std::size_t Count() const { return items.size(); }
    [[nodiscard]] const boost::shared_ptr<PSDPart>& Item(std::size_t index) const {
        return items[index];
    }
    void Clear() { items.clear(); }

    void WriteBody(std::ostream& stream) override;

  private:
    std::vector<boost::shared_ptr<PSDPart>> items;
};

}  // namespace psdfile
