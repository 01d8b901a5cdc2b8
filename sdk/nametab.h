// The host's array of names.
#pragma once

#include <vector>

#include "strclass.h"

class NameTab {
  public:
    int Count() const { return static_cast<int>(names_.size()); }
    // The name's index. Null counts as empty.
    int AddName(const MCHAR* name) {
        names_.emplace_back(name);
        return Count() - 1;
    }
    // Never null; valid until the table changes.
    const MCHAR* operator[](int i) const { return names_[static_cast<std::size_t>(i)].data(); }

  private:
    std::vector<MSTR> names_;
};
