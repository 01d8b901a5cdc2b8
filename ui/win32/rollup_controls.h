// What the rollups do with the host's controls and the system's in the same way.
#pragma once

#include <iparamm2.h>
#include <strclass.h>

#include "ui/output_as_groups.h"

namespace ui {

// The look of the buttons of the map's rollup.
void SetUpButtons(IParamMap2& map);
// The control is greyed, or not, whatever class it is of. The keyboard leaves one that is greyed.
// Nothing for null.
void EnableControl(HWND control, bool on);
// Nothing for null.
void ShowControl(HWND control, bool on);

// The control, or a part of it, has the keyboard.
bool HasKeyboard(HWND control);
// In its dialog's client pixels.
RECT PlaceInDialog(HWND control);

// Of a CustEdit; nothing, and the empty text, for another window.
MSTR EditText(HWND control);
void SetEditText(HWND control, const MSTR& text);
void NotifyOnEachKey(HWND control);

// Of a CustButton: one that stays pressed while it is checked, and its check.
void MakeCheckButton(HWND control);
void CheckButton(HWND control, bool on);

void ShowOutputGroup(IParamMap2& map, const OutputAsGroup& group);

}  // namespace ui
