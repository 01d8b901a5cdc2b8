#include "ui/win32/about_box.h"

#include <filesystem>

#include "ui/about_texts.h"
#include "ui/win32/library_file.h"

namespace ui {
namespace {

// Beside this library. Stays loaded to the end of the process.
AboutFunction LoadAbout(const MCHAR* library, const char* function) {
    const std::filesystem::path file =
        std::filesystem::path(LibraryFile().data()).parent_path() / library;
    HMODULE module = LoadLibraryW(file.c_str());
    if (!module) return nullptr;
    // By way of void (*)(), which all functions' pointers may go.
    auto* address = reinterpret_cast<void (*)()>(GetProcAddress(module, function));
    return reinterpret_cast<AboutFunction>(address);
}

}  // namespace

void OpenAboutBox(HWND parent) {
    OpenAbout(parent, LoadAbout);
}

}  // namespace ui
