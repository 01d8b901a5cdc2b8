// Class ids of the renderers that are told apart. Outside parties' classes, not the host's.
#pragma once

#include "plugapi.h"

constexpr Class_ID VRAY_CLASS_ID{0x73bab286, 0x77f8fd0c};
// Doesn't call effects by itself: RenderBegin, Apply and RenderEnd come from notifications.
constexpr Class_ID CORONA_CLASS_ID{0x62a85dcc, 0x523c3604};
// Renders fields, and hands over to class B for the length of Apply.
constexpr Class_ID RENDERER_A_CLASS_ID{0x58f67d6c, 0x4fcf3bc3};
constexpr Class_ID RENDERER_B_CLASS_ID{0x3e7d7eba, 0x14c036ab};
// Its frames are never saved.
constexpr Class_ID RENDERER_C_CLASS_ID{0x0cf12ab7, 0x03762873};
