// The host's own pictures, which controls show by name (ICustButton::SetIconByName). They are
// outlines, so that they are sharp at every size.
#pragma once

#include <windows.h>

namespace host {

struct IconColors {
    COLORREF line;
    // Of large inner parts, such as a folder's front.
    COLORREF fill;
};

// Names are compared unit for unit.
bool HasIcon(const wchar_t* name);

// The picture, as large as the rectangle and with soft edges, over what is there. False, and
// nothing drawn, for a name that there is no picture of and for a rectangle without a pixel.
bool DrawIcon(HDC dc, const RECT& place, const wchar_t* name, const IconColors& colors);

}  // namespace host
