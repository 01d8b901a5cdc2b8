#include "host/window_tree.h"

#ifndef _WIN32

#include <algorithm>

#include "host/application.h"
#include "host/text.h"

namespace host {

HWND WindowTree::Add(const WindowSpec& spec) {
    if ((spec.parent && !Contains(spec.parent)) || (spec.owner && !Contains(spec.owner))) {
        return nullptr;
    }
    windows_.push_back(std::make_unique<HWND__>(
        HWND__{spec.className, spec.title, spec.parent, spec.owner, spec.id}));
    return windows_.back().get();
}

void WindowTree::Remove(HWND window) {
    if (!Contains(window)) {
        return;
    }
    const auto belongs = [&](const auto& other) {
        return other->parent == window || other->owner == window;
    };
    for (auto found = std::find_if(windows_.begin(), windows_.end(), belongs);
         found != windows_.end(); found = std::find_if(windows_.begin(), windows_.end(), belongs)) {
        Remove(found->get());
    }
    std::erase_if(windows_, [&](const auto& other) { return other.get() == window; });
}

bool WindowTree::Contains(HWND window) const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [&](const auto& other) { return other.get() == window; });
}

HWND WindowTree::Next(HWND parent, HWND after) const {
    bool passed = after == nullptr;
    for (const auto& window : windows_) {
        if (passed && window->parent == parent) {
            return window.get();
        }
        passed = passed || window.get() == after;
    }
    return nullptr;
}

}  // namespace host

HWND FindWindow(const MCHAR* className, const MCHAR* title) {
    const auto fits = [](const MCHAR* wanted, const MSTR& text) {
        return !wanted || host::EqualIgnoringAsciiCase(wanted, text.data());
    };
    const host::WindowTree& windows = host::App().windows;
    for (HWND window = windows.Next(nullptr, nullptr); window;
         window = windows.Next(nullptr, window)) {
        if (fits(className, window->className) && fits(title, window->title)) {
            return window;
        }
    }
    return nullptr;
}

HWND GetTopWindow(HWND parent) {
    return host::App().windows.Next(parent, nullptr);
}

HWND GetWindow(HWND window, UINT relation) {
    const host::WindowTree& windows = host::App().windows;
    return relation == GW_HWNDNEXT && windows.Contains(window)
               ? windows.Next(window->parent, window)
               : nullptr;
}

HWND GetParent(HWND window) {
    if (!host::App().windows.Contains(window)) {
        return nullptr;
    }
    return window->parent ? window->parent : window->owner;
}

HWND GetDlgItem(HWND dialog, int id) {
    const host::WindowTree& windows = host::App().windows;
    if (!windows.Contains(dialog)) {
        return nullptr;
    }
    for (HWND child = windows.Next(dialog, nullptr); child; child = windows.Next(dialog, child)) {
        if (child->id == id) {
            return child;
        }
    }
    return nullptr;
}

int GetClassName(HWND window, MCHAR* name, int size) {
    if (!host::App().windows.Contains(window) || size < 1) {
        return 0;
    }
    const int units = std::min(window->className.Length(), size - 1);
    *std::copy_n(window->className.data(), units, name) = 0;
    return units;
}

BOOL SetWindowText(HWND window, const MCHAR* text) {
    if (!host::App().windows.Contains(window)) {
        return FALSE;
    }
    window->title = MSTR(text);
    return TRUE;
}

#endif
