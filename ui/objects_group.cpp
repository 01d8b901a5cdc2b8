#include "ui/objects_group.h"

#include <iparamb2.h>
#include <maxapi.h>

#include <algorithm>

#include "plugin/parameters.h"

namespace ui {

ObjectsGroup RefreshObjectsGroup(IParamBlock2& pblock, bool picking,
                                 std::span<const int> selectedRows) {
    const int count = pblock.Count("objectList"_param);
    const bool rowsEnabled =
        pblock.GetInt("outputObjects"_param) && !picking && !selectedRows.empty();
    ObjectsGroup group;
    group.addSelectedEnabled = GetCOREInterface()->GetSelNodeCount() >= 1 && !picking;
    group.addObjectsEnabled = !picking;
    group.addObjectsChecked = picking;
    group.removeEnabled = rowsEnabled;
    if (!rowsEnabled) return group;
    const auto [first, last] = std::minmax_element(selectedRows.begin(), selectedRows.end());
    group.upEnabled = *first > 0 && *last < count;
    group.downEnabled = *first >= 0 && *last < count - 1;
    return group;
}

}  // namespace ui
