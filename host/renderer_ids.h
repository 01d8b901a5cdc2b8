// The renderers that effects treat in a way of their own.
#pragma once

#include <plugapi.h>

namespace host {

constexpr Class_ID VRAY_CLASS_ID{0x73bab286, 0x77f8fd0c};
constexpr Class_ID CORONA_CLASS_ID{0x62a85dcc, 0x523c3604};
// Has fields; stands behind class B, whose contexts name it as their renderer.
constexpr Class_ID RENDERER_A_CLASS_ID{0x58f67d6c, 0x4fcf3bc3};
constexpr Class_ID RENDERER_B_CLASS_ID{0x3e7d7eba, 0x14c036ab};
// Its frames are never saved.
constexpr Class_ID RENDERER_C_CLASS_ID{0x0cf12ab7, 0x03762873};

}  // namespace host
