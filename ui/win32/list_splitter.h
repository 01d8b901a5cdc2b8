// The bar below a list with which the user drags the list higher or lower; its rollup grows and
// shrinks with it.
#pragma once

#include <iparamm2.h>

#include "ui/list_views.h"

namespace ui {

// Puts the splitter (IDC_LIST_SPLITTER) of the map's dialog below the list, gives the list the
// height that the configuration file has for it, and takes the splitter's mouse. Goes with the
// dialog. `kind` is one of the lists of list_views.h.
void SetUpSplitter(IParamMap2& map, const ListView& kind);

}  // namespace ui
