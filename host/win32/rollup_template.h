// A library's dialog template as a rollup needs it.
#pragma once

#include <vector>

#include <maxtypes.h>

namespace host {

// Aligned for CreateDialogIndirectParam. Whatever the template says, the dialog is a child without
// a frame of its own, hidden at first, whose controls the tab key reaches from outside. Empty for a
// resource that isn't there or is no dialog.
std::vector<DWORD> RollupTemplate(HINSTANCE module, const MCHAR* dlgTemplate);

}  // namespace host
