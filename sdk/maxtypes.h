// Scalar types of the host, and its clock.
#pragma once

#include <cstdint>

#ifdef _WIN32
// The system's own names for all but the host's two.
#include <windows.h>
#else
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
// 32 bits on every platform, as on 64-bit Windows.
using ULONG = std::uint32_t;
using BOOL = int;
using USHORT = std::uint16_t;

#define TRUE 1
#define FALSE 0
#endif

using UBYTE = std::uint8_t;
using UWORD = std::uint16_t;

// UTF-16 code units everywhere, so that every length limit means the same.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the host's and the system's.
#ifdef _WIN32
using MCHAR = wchar_t;
#define _M(text) L##text
#else
using MCHAR = char16_t;
#define _M(text) u##text
#endif

#ifndef _WIN32
// Handles of the window system and of a loaded library; null where there is none.
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
#endif
// NOLINTEND(bugprone-reserved-identifier)

// Ticks of 1/4800 second.
using TimeValue = int;

// Ticks a frame at the scene's frame rate; above 0.
int GetTicksPerFrame();
