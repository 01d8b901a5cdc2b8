#include "ui/win32/open_file.h"

#include <shellapi.h>
#include <windows.h>

namespace ui {
namespace {

void OpenInItsProgram(const MSTR& file) {
    ShellExecuteW(GetDesktopWindow(), L"open", file.data(), nullptr, nullptr, SW_SHOWNORMAL);
}

FileOpener fileOpener = OpenInItsProgram;

}  // namespace

void OpenFile(const MSTR& file) {
    fileOpener(file);
}

void UseFileOpener(FileOpener opener) {
    fileOpener = opener ? opener : OpenInItsProgram;
}

}  // namespace ui
