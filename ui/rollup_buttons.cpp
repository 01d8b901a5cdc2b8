#include "ui/rollup_buttons.h"

namespace ui {
namespace {

constexpr const MCHAR* folderPicture = _M("Common/Folder");
constexpr const MCHAR* upPicture = _M("Common/UIComponents/ArrowUp");
constexpr const MCHAR* downPicture = _M("Common/UIComponents/ArrowDown");
constexpr const MCHAR* groupTip = _M("Layer Group");
constexpr const MCHAR* upTip = _M("Move Up");
constexpr const MCHAR* downTip = _M("Move Down");

constexpr RollupButton rollupButtons[] = {
    {1008, 0, _M("Common/Settings"), _M("Advanced Options")},
    {1184, 1, folderPicture, groupTip, true},
    {1069, 1, upPicture, upTip},
    {1068, 1, downPicture, downTip},
    {1079, 1, nullptr, _M("Sort Render Elements automatically."), true},
    {1007, 2, folderPicture, groupTip, true},
    {1010, 2, folderPicture, groupTip, true},
    {1009, 2, folderPicture, groupTip, true},
    {1006, 2, upPicture, upTip},
    {1008, 2, downPicture, downTip},
    {1150, 5, folderPicture, groupTip, true},
    {1158, 5, _M("MergeAnimation/UpdateList"), _M("Refresh Layers List")},
    {1189, 7, folderPicture, groupTip, true},
};

}  // namespace

std::span<const RollupButton> RollupButtons() {
    return rollupButtons;
}

}  // namespace ui
