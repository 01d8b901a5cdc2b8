// The three lists of what goes into the document: render elements, scene layers and named selection
// sets. A list keeps no texts and no check marks of its own; it asks for them as it draws a row.
#pragma once

#include <maxtypes.h>

#include <cstdint>
#include <span>

#include "plugin/parameters.h"

namespace ui {

struct ListColumn {
    // In the library's string table.
    int title;
    // Pixels.
    int width;
};

struct ListView {
    // Control of the dialog of `map`.
    int control;
    MapID map;
    // The system's bits: 4 check boxes, 32 rows that are selected over their whole width.
    std::uint32_t extendedStyle;
    bool renamesRows;
    std::span<const ListColumn> columns;
    // Under which the configuration file keeps its height.
    const MCHAR* heightKey;
};

inline constexpr ListColumn elementColumns[] = {{12, 120}, {13, 42}, {15, 86}, {16, 41}};
inline constexpr ListColumn sceneLayerColumns[] = {{50, 265}};
inline constexpr ListColumn selectionSetColumns[] = {{56, 265}};

inline constexpr ListView elementList{1043, 1, 36, true, elementColumns, _M("REListViewHeight")};
inline constexpr ListView sceneLayerList{
    1153, 5, 4, false, sceneLayerColumns, _M("MaxLayersListViewHeight")};
inline constexpr ListView selectionSetList{
    1192, 7, 4, false, selectionSetColumns, _M("SelSetsListViewHeight")};

// A row's check box, as the number of its state image.
constexpr int CheckImage(bool on) {
    return on ? 2 : 1;
}

}  // namespace ui
