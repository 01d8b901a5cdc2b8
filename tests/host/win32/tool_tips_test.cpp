#include <custcont.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/tool_tip_text.h"

namespace {

using testing::IsEmpty;

TEST(ToolTips, AreShownForControlsOfAnyClass) {
    const ControlStage stage;
    HWND box = stage.Add(L"Button", 1);
    HWND combo = stage.Add(L"ComboBox", 2);
    TooltipExtender tips;
    tips.SetToolTip(box, _M("Of the box"));
    tips.SetToolTip(combo, _M("Of the list"));
    EXPECT_EQ(TipOf(box), L"Of the box");
    EXPECT_EQ(TipOf(combo), L"Of the list");
    EXPECT_EQ(TipWindows().size(), 1U);
}

TEST(ToolTips, KeepTheirLines) {
    const ControlStage stage;
    HWND box = stage.Add(L"Button", 1);
    TooltipExtender tips;
    tips.SetToolTip(box, _M("First line.\nSecond line.\n Third"));
    EXPECT_EQ(TipOf(box), L"First line.\nSecond line.\n Third");
    // Lines are broken only by a window that has a width.
    EXPECT_EQ(SendMessageW(TipWindows().at(0), TTM_GETMAXTIPWIDTH, 0, 0), 400);
}

TEST(ToolTips, ASecondTextTakesTheFirstOnesPlace) {
    const ControlStage stage;
    HWND box = stage.Add(L"Button", 1);
    TooltipExtender tips;
    tips.SetToolTip(box, _M("Before"));
    tips.SetToolTip(box, _M("After"));
    EXPECT_EQ(TipOf(box), L"After");
    EXPECT_EQ(SendMessageW(TipWindows().at(0), TTM_GETTOOLCOUNT, 0, 0), 1);
}

TEST(ToolTips, AnEmptyTextTakesThemAway) {
    const ControlStage stage;
    HWND box = stage.Add(L"Button", 1);
    TooltipExtender tips;
    tips.SetToolTip(box, MSTR());
    EXPECT_THAT(TipWindows(), IsEmpty());
    tips.SetToolTip(box, _M("Text"));
    tips.SetToolTip(box, MSTR());
    EXPECT_EQ(TipOf(box), std::nullopt);
}

TEST(ToolTips, GoWithTheObject) {
    const ControlStage stage;
    HWND box = stage.Add(L"Button", 1);
    {
        TooltipExtender tips;
        tips.SetToolTip(box, _M("Text"));
        EXPECT_EQ(TipWindows().size(), 1U);
        tips.RemoveToolTips();
        EXPECT_THAT(TipWindows(), IsEmpty());
        tips.SetToolTip(box, _M("Text"));
    }
    EXPECT_THAT(TipWindows(), IsEmpty());
}

TEST(ToolTips, MayOutliveTheDialog) {
    TooltipExtender tips;
    {
        const ControlStage stage;
        tips.SetToolTip(stage.Add(L"Button", 1), _M("Text"));
    }
    EXPECT_THAT(TipWindows(), IsEmpty());
    const ControlStage another;
    HWND box = another.Add(L"Button", 1);
    tips.SetToolTip(box, _M("Again"));
    EXPECT_EQ(TipOf(box), L"Again");
}

TEST(ToolTips, OfAWindowThatIsNoneAreNotMade) {
    TooltipExtender tips;
    tips.SetToolTip(nullptr, _M("Text"));
    EXPECT_THAT(TipWindows(), IsEmpty());
}

TEST(ToolTips, OfTheHostsControlsAreTheirOwn) {
    const ControlStage stage;
    for (const wchar_t* name : {CUSTBUTTONWINDOWCLASS, CUSTEDITWINDOWCLASS, SPINNERWINDOWCLASS}) {
        HWND window = stage.Add(name, 1);
        ICustButton* const button = GetICustButton(window);
        ICustEdit* const edit = GetICustEdit(window);
        host::Spinner* const spinner = host::GetSpinner(window);
        ICustomControl* const control = button ? static_cast<ICustomControl*>(button)
                                        : edit ? static_cast<ICustomControl*>(edit)
                                               : spinner;
        ASSERT_NE(control, nullptr);
        control->SetTooltip(true, _M("Move Up"));
        // A window for each would make a dialog slow to open.
        EXPECT_THAT(TipWindows(), IsEmpty());
        EXPECT_EQ(TipOf(window), L"Move Up");
        control->SetTooltip(true, nullptr);
        EXPECT_EQ(TipOf(window), std::nullopt);
        control->SetTooltip(true, _M("Move Up"));
        control->SetTooltip(false, _M("Move Up"));
        EXPECT_EQ(TipOf(window), std::nullopt);
        control->SetTooltip(true, _M("Move Up"));
        DestroyWindow(window);
        EXPECT_THAT(TipWindows(), IsEmpty());
        ReleaseICustButton(button);
        ReleaseICustEdit(edit);
        host::ReleaseSpinner(spinner);
    }
}

}  // namespace
