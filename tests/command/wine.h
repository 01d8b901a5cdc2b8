// Whether it is Wine that runs the tests for Windows.
#pragma once

#ifdef _WIN32
#include <windows.h>

inline bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}
#else
constexpr bool IsWine() {
    return false;
}
#endif
