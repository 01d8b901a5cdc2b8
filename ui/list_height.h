// How high the user made the lists, which the configuration file remembers.
#pragma once

#include <optional>

#include "ui/list_views.h"

namespace ui {

// Pixels. A list isn't made lower or higher than these.
constexpr int lowestList = 39;
constexpr int highestList = 800;

// Nothing for one that isn't stored or isn't within the limits: the template's height stays then.
std::optional<int> StoredListHeight(const ListView& list);

struct ListSize {
    // Of the list now, and of the dialog that it lies in.
    int list;
    int dialog;
};

// The heights that a list and its dialog are to get; what lies below the list moves by the
// difference. `height` is what the list is to have or, when `relative`, what it is to have more.
// The list's height is stored. Nothing for one that isn't within the limits, and for a dialog that
// would be left with no height.
std::optional<ListSize> ApplyListViewHeight(const ListView& list, const ListSize& present,
                                            int height, bool relative);

}  // namespace ui
