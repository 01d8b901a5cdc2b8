#include "ui/win32/rollup_rend_dialog.h"

#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"

namespace {

class RollupRendDialog : public PanelTest {
  protected:
    RollupRendDialog() {
        owner = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_POPUP | WS_CLIPCHILDREN, 50,
                                20, 480, 500, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ShowWindow(owner, SW_SHOWNOACTIVATE);
    }
    ~RollupRendDialog() override {
        if (IsWindow(owner)) DestroyWindow(owner);
    }

    HWND owner = nullptr;
};

TEST_F(RollupRendDialog, ShowsTheSameRollupsInAWindowOfItsOwn) {
    ui::RollupRendDialog outside(owner);
    EXPECT_EQ(GetParent(outside.Tool().Window()), owner);
    EXPECT_EQ(ClassOf(outside.Tool().Window()), "RollupWindow");
    RECT client{};
    GetClientRect(owner, &client);
    EXPECT_EQ(WidthOf(outside.Tool().Window()), client.right);
    SFXParamDlg* shown = effect->CreateParamDialog(&outside);
    ASSERT_TRUE(shown);
    IRollupWindow* rollups = outside.GetRollupWindow();
    ASSERT_EQ(rollups->GetNumPanels(), 7);
    EXPECT_EQ(rollups->GetPanelDlg(0), Dialog(0));
    Press(0, IDC_RESOLUTION_300);
    EXPECT_EQ(Block().GetFloat("resolution"_param), 300.0F);
    Press(6, IDC_GBUFFER_NORMAL);
    EXPECT_EQ(Block().GetInt("createNormalLayer"_param), TRUE);
    shown->DeleteThis();
    EXPECT_EQ(rollups->GetNumPanels(), 0);
}

TEST_F(RollupRendDialog, PagesComeAndGo) {
    ui::RollupRendDialog outside(owner);
    HINSTANCE module = GetModuleHandleW(nullptr);
    const auto add = [&](int number, DWORD flags) {
        return outside.AddRollupPage(module, MAKEINTRESOURCEW(number), nullptr, _M("Title"), 0,
                                     flags, ROLLUP_CAT_STANDARD);
    };
    HWND first = add(IDD_GBUFFER, 0);
    HWND second = add(IDD_SCENE_DATA, APPENDROLL_CLOSED);
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_TRUE(GetDlgItem(first, IDC_GBUFFER_NORMAL));
    EXPECT_TRUE(outside.GetRollupWindow()->IsPanelOpen(0));
    EXPECT_FALSE(outside.GetRollupWindow()->IsPanelOpen(1));
    EXPECT_EQ(add(9999, 0), nullptr);
    outside.DeleteRollupPage(first);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindow(second));
    outside.DeleteRollupPage(first);
    outside.DeleteRollupPage(owner);
    EXPECT_EQ(outside.GetRollupWindow()->GetNumPanels(), 1);
}

TEST_F(RollupRendDialog, TheOwnerHearsThatARollupOpensOrCloses) {
    ui::RollupRendDialog outside(owner);
    std::vector<std::pair<int, bool>> heard;
    SFXParamDlg* shown = effect->CreateParamDialog(&outside);
    outside.Tool().onOpenChange = [&heard](int index, bool open) {
        heard.emplace_back(index, open);
    };
    IRollupWindow* rollups = outside.GetRollupWindow();
    rollups->SetPanelOpen(5, !rollups->IsPanelOpen(5));
    const bool open = rollups->IsPanelOpen(5);
    rollups->SetPanelOpen(5, !open);
    EXPECT_THAT(heard, testing::ElementsAre(std::pair(5, open), std::pair(5, !open)));
    outside.Tool().onOpenChange = nullptr;
    rollups->SetPanelOpen(5, open);
    EXPECT_EQ(heard.size(), 2U);
    shown->DeleteThis();
}

TEST_F(RollupRendDialog, AnEmptyPartOfAPageScrolls) {
    ui::RollupRendDialog outside(owner);
    SFXParamDlg* shown = effect->CreateParamDialog(&outside);
    IRollupWindow* rollups = outside.GetRollupWindow();
    for (int i = 0; i < rollups->GetNumPanels(); ++i)
        rollups->SetPanelOpen(i, TRUE);
    const LONG before = PlaceOf(Dialog(1)).top;
    outside.RollupMouseMessage(Dialog(1), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 100));
    outside.RollupMouseMessage(Dialog(1), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(1, 60));
    outside.RollupMouseMessage(Dialog(1), WM_LBUTTONUP, 0, MAKELPARAM(1, 60));
    EXPECT_EQ(PlaceOf(Dialog(1)).top, before - 40);
    shown->DeleteThis();
}

TEST_F(RollupRendDialog, ItsTimeIsNeutral) {
    ui::RollupRendDialog outside(owner);
    EXPECT_EQ(outside.GetTime(), 0);
}

TEST_F(RollupRendDialog, ItsWindowMayGoFirst) {
    ui::RollupRendDialog outside(owner);
    SFXParamDlg* shown = effect->CreateParamDialog(&outside);
    DestroyWindow(owner);
    EXPECT_EQ(outside.Tool().Window(), nullptr);
    EXPECT_EQ(outside.GetRollupWindow(), nullptr);
    EXPECT_EQ(outside.AddRollupPage(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_GBUFFER),
                                    nullptr, _M("Title"), 0, 0, ROLLUP_CAT_STANDARD),
              nullptr);
    outside.RollupMouseMessage(nullptr, WM_MOUSEMOVE, 0, 0);
    shown->DeleteThis();
}

TEST_F(RollupRendDialog, TheWindowGoesWithIt) {
    HWND rollupsWindow = nullptr;
    {
        ui::RollupRendDialog outside(owner);
        rollupsWindow = outside.Tool().Window();
        EXPECT_TRUE(IsWindow(rollupsWindow));
    }
    EXPECT_FALSE(IsWindow(rollupsWindow));
}

TEST_F(RollupRendDialog, WithoutAParentThereIsNoWindow) {
    ui::RollupRendDialog outside(nullptr);
    EXPECT_EQ(outside.Tool().Window(), nullptr);
    EXPECT_EQ(outside.GetRollupWindow(), nullptr);
    outside.DeleteRollupPage(nullptr);
}

}  // namespace
