#include "ui/win32/attach.h"

#include <algorithm>

#include "plugin/class_descriptors.h"
#include "tests/ui/win32/panel_stage.h"
#include "ui/win32/parameter_map_procedure.h"

namespace {

class Attach : public PanelTest {};

TEST_F(Attach, AllRollupsHaveTheOneProcedure) {
    ParamBlockDesc2* block = Block().GetDesc();
    for (const MapID map : std::initializer_list<MapID>{0, 1, 2, 4, 5, 6, 7})
        EXPECT_EQ(block->GetUserDlgProc(map), &ui::DialogProcedure()) << map;
    EXPECT_EQ(block->GetUserDlgProc(3), nullptr);
}

TEST_F(Attach, TheRollupsStandInTheirOrderUnderTheirTitles) {
    Open();
    IRollupWindow* rollups = place->GetRollupWindow();
    const std::pair<MapID, const char*> wanted[] = {
        {0, "veltrane Parameters"},        {1, "Render Elements Output"},
        {5, "Scene Layers Output"},        {7, "Named Selection Sets Output"},
        {2, "Objects & Materials Output"}, {6, "G-Buffer Output"},
        {4, "Scene Data Output"}};
    ASSERT_EQ(rollups->GetNumPanels(), 7);
    std::vector<std::pair<LONG, std::string>> titles;
    for (HWND child = GetWindow(rollupWindow, GW_CHILD); child;
         child = GetWindow(child, GW_HWNDNEXT)) {
        MCHAR name[32] = {};
        GetClassNameW(child, name, 32);
        if (_wcsicmp(name, L"Button") != 0) continue;
        RECT area{};
        GetWindowRect(child, &area);
        MCHAR title[64] = {};
        GetWindowTextW(child, title, 64);
        // A button's text has the sign twice.
        std::string shown = host::ToUtf8(title);
        if (const std::size_t twice = shown.find("&&"); twice != shown.npos) shown.erase(twice, 1);
        titles.emplace_back(area.top, shown);
    }
    std::sort(titles.begin(), titles.end());
    ASSERT_EQ(titles.size(), 7U);
    for (int i = 0; i < 7; ++i) {
        const auto& [map, title] = wanted[i];
        EXPECT_EQ(rollups->GetPanelDlg(i), Dialog(map)) << i;
        EXPECT_EQ(titles[static_cast<std::size_t>(i)].second, title);
    }
}

}  // namespace
