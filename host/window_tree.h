// The windows of a desktop where there is no window system: what windowtree.h looks at.
#pragma once

#ifndef _WIN32

#include <memory>
#include <vector>

#include <strclass.h>
#include <windowtree.h>

// A window handle points at this; what it is, only the tree knows.
struct HWND__ {
    MSTR className;
    MSTR title;
    HWND parent = nullptr;
    HWND owner = nullptr;
    int id = 0;
};

namespace host {

struct WindowSpec {
    MSTR className;
    MSTR title;
    // Null for a top-level window.
    HWND parent = nullptr;
    // Of a top-level window: GetParent gives it.
    HWND owner = nullptr;
    // A child's control id.
    int id = 0;
};

class WindowTree {
  public:
    // Behind its siblings. Null when the parent or owner isn't of this tree.
    HWND Add(const WindowSpec& spec);
    // With its children, and with the windows that it owns. Does nothing for a window that isn't
    // there.
    void Remove(HWND window);

    bool Contains(HWND window) const;
    // Null when there is none behind `after`; a null `after` gives the first.
    HWND Next(HWND parent, HWND after) const;

  private:
    // Siblings from front to back.
    std::vector<std::unique_ptr<HWND__>> windows_;
};

}  // namespace host

#endif
