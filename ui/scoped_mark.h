// A mark that is set for one scope, however the scope ends; then it is as it was before.
#pragma once

#include <utility>

namespace ui {

class ScopedMark {
  public:
    explicit ScopedMark(bool& set) : mark(set), before(std::exchange(set, true)) {}
    ~ScopedMark() { mark = before; }
    ScopedMark(const ScopedMark&) = delete;
    ScopedMark& operator=(const ScopedMark&) = delete;

  private:
    bool& mark;
    bool before;
};

}  // namespace ui
