// What the about box shows. It is drawn by a library of its own, loaded when the box opens.
#pragma once

#include <maxtypes.h>

#include <span>

namespace ui {

struct AboutText {
    const MCHAR* label;
    const MCHAR* text;
};

// In their order, valid for good.
std::span<const AboutText> AboutTexts();

inline constexpr const MCHAR* aboutLibrary = _M("veltrane-about.dll");
// The library's one function, under this name.
inline constexpr const char* aboutFunctionName = "ShowAbout";
using AboutFunction = void (*)(HWND parent, const AboutText* texts, int count);

// Loads the library by its name and finds the function in it; null when it can't.
using AboutLoader = AboutFunction (*)(const MCHAR* library, const char* function);

// Opens the box; nothing opens without the library.
void OpenAbout(HWND parent, AboutLoader load);

}  // namespace ui
