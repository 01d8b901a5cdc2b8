#include "host/win32/rollup_template.h"

#include <cstring>

namespace host {
namespace {

constexpr DWORD unwantedStyles = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME |
                                 WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_VISIBLE | DS_MODALFRAME;
constexpr DWORD unwantedExtendedStyles = WS_EX_NOPARENTNOTIFY | WS_EX_DLGMODALFRAME |
                                         WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE | WS_EX_TOOLWINDOW;

// The newer form of a template starts with its version, 1, and this, then has a help id.
constexpr DWORD newerForm = 0xffff0001;
// In DWORDs: where the newer form has its extended style; the style is behind it. The older form
// starts with the style.
constexpr std::size_t newerExtendedStyle = 2;

}  // namespace

std::vector<DWORD> RollupTemplate(HINSTANCE module, const MCHAR* dlgTemplate) {
    HRSRC resource = FindResourceW(module, dlgTemplate, RT_DIALOG);
    HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    const void* data = loaded ? LockResource(loaded) : nullptr;
    const DWORD bytes = resource ? SizeofResource(module, resource) : 0;
    if (!data || bytes < sizeof(DLGTEMPLATE)) return {};

    std::vector<DWORD> copy((bytes + sizeof(DWORD) - 1) / sizeof(DWORD));
    std::memcpy(copy.data(), data, bytes);
    const bool newer = copy[0] == newerForm;
    DWORD& style = copy[newer ? newerExtendedStyle + 1 : 0];
    DWORD& extendedStyle = copy[newer ? newerExtendedStyle : 1];
    style = (style & ~unwantedStyles) | WS_CHILD | DS_CONTROL;
    extendedStyle = (extendedStyle & ~unwantedExtendedStyles) | WS_EX_CONTROLPARENT;
    return copy;
}

}  // namespace host
