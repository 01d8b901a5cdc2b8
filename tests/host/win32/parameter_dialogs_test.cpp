#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>

#include <memory>
#include <string>
#include <vector>

#include "host/win32/effect_rollups.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/leak_rounds.h"
#include "tests/host/win32/object_counts.h"
#include "tests/host/win32/rollup_stage.h"
#include "tests/host/win32/sample_panel.h"

namespace {

using testing::ElementsAre;

class ParameterDialogs : public testing::Test {
  protected:
    ParameterDialogs() { host::ResetApplication(); }
    ~ParameterDialogs() override {
        Close();
        EXPECT_EQ(host::App().invalidateUI, nullptr);
        effect.reset();
        host::ResetApplication();
    }
    void Show() { dialogs.reset(desc.CreateParamDialogs(&place, effect.get())); }
    void Close() { dialogs.reset(); }
    HWND Dialog(MapID id) {
        IParamMap2* map = desc.GetParamMap(&desc.block, id);
        return map ? map->GetHWnd() : nullptr;
    }

    PanelClassDesc desc;
    host::Owned<PanelEffect> effect{new PanelEffect(desc)};
    RollupStage stage{900};
    host::EffectRollups place{stage.rollupWindow};
    host::Owned<SFXParamDlg> dialogs;
};

TEST_F(ParameterDialogs, OpenTheRollupsInTheirOrder) {
    Show();
    ASSERT_NE(dialogs, nullptr);
    EXPECT_EQ(dialogs->ClassID(), effect->ClassID());
    EXPECT_EQ(dialogs->GetThing(), effect.get());
    ASSERT_EQ(stage.rollups->GetNumPanels(), 2);
    EXPECT_EQ(TextOf(stage.Title(0)), L"Main && First");
    EXPECT_EQ(TextOf(stage.Title(1)), L"More");
    EXPECT_EQ(stage.rollups->GetPanelDlg(0), Dialog(mainMap));
    EXPECT_EQ(stage.rollups->GetPanelDlg(1), Dialog(moreMap));
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
    // Its flag says so.
    EXPECT_FALSE(stage.rollups->IsPanelOpen(1));
}

TEST_F(ParameterDialogs, NothingIsShownWithoutAPlaceOrAnEffect) {
    EXPECT_EQ(desc.CreateParamDialogs(nullptr, effect.get()), nullptr);
    EXPECT_EQ(desc.CreateParamDialogs(&place, nullptr), nullptr);
}

TEST_F(ParameterDialogs, BlocksWithoutRollupsAreLeftOut) {
    desc.block.flags = static_cast<USHORT>(desc.block.flags & ~P_AUTO_UI);
    Show();
    ASSERT_NE(dialogs, nullptr);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
}

TEST_F(ParameterDialogs, BlocksOfAnotherClassAreLeftOut) {
    PanelClassDesc another;
    dialogs.reset(another.CreateParamDialogs(&place, effect.get()));
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
    Close();
}

TEST_F(ParameterDialogs, AProcedureKnowsItsEffectWhenItsFirstDialogOpens) {
    std::vector<ReferenceTarget*> known;
    desc.procedure.answer = [&](IParamMap2*, HWND, UINT message, WPARAM, LPARAM) {
        if (message == WM_INITDIALOG && known.empty()) known = desc.procedure.things;
        return INT_PTR{FALSE};
    };
    Show();
    EXPECT_THAT(known, ElementsAre(effect.get()));
}

TEST_F(ParameterDialogs, AMapIsFoundFromItsDialogsStartToItsEnd) {
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap), nullptr);
    std::vector<bool> found;
    desc.procedure.answer = [&](IParamMap2* map, HWND, UINT message, WPARAM, LPARAM) {
        if (message == WM_INITDIALOG) {
            found.push_back(desc.GetParamMap(&desc.block, map->GetMapID()) == map);
        }
        return INT_PTR{FALSE};
    };
    Show();
    EXPECT_THAT(found, ElementsAre(true, true));
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap)->GetParamBlock(), effect->block);
    EXPECT_EQ(desc.GetParamMap(&desc.block, 77), nullptr);
    EXPECT_EQ(desc.GetParamMap(nullptr, mainMap), nullptr);
    Close();
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap), nullptr);
}

TEST_F(ParameterDialogs, AnotherEffectTakesThePlace) {
    const host::Owned<PanelEffect> other(new PanelEffect(desc));
    other->block->SetValue(PANEL_TEXT, 0, _M("other"));
    Show();
    desc.procedure.things.clear();
    dialogs->SetThing(other.get());
    EXPECT_EQ(dialogs->GetThing(), other.get());
    EXPECT_EQ(TextOf(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT)), L"other");
    EXPECT_EQ(desc.GetParamMap(&desc.block, moreMap)->GetParamBlock(), other->block);
    // Once, though it has two maps.
    EXPECT_THAT(desc.procedure.things, ElementsAre(other.get()));
    // The same again, and what is no effect of the class, changes nothing.
    dialogs->SetThing(other.get());
    dialogs->SetThing(nullptr);
    dialogs->SetThing(other->block);
    EXPECT_EQ(dialogs->GetThing(), other.get());
    EXPECT_EQ(desc.procedure.things.size(), 1U);
    dialogs->SetThing(effect.get());
}

TEST_F(ParameterDialogs, WhatIsBeingTypedGoesToTheEffectThatGivesUpThePlace) {
    const host::Owned<PanelEffect> other(new PanelEffect(desc));
    other->block->SetValue(PANEL_TEXT, 0, _M("other"));
    Show();
    SetFocus(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT));
    Type(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT), L"new ");
    dialogs->SetThing(other.get());
    EXPECT_EQ(MSTR(effect->block->GetStr(PANEL_TEXT)), MSTR(_M("new text")));
    EXPECT_EQ(MSTR(other->block->GetStr(PANEL_TEXT)), MSTR(_M("other")));
    EXPECT_EQ(TextOf(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT)), L"other");
    dialogs->SetThing(effect.get());
}

TEST_F(ParameterDialogs, ClosingEndsEachMap) {
    Show();
    HWND dialog = Dialog(mainMap);
    Close();
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
    EXPECT_EQ(desc.procedure.deletions, 2);
}

TEST_F(ParameterDialogs, ClosingGivesWhatIsBeingTypedWhileAllIsStillThere) {
    Show();
    SetFocus(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT));
    Type(GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT), L"new ");
    bool seen = false;
    desc.accessor.onSet = [&](PB2Value&, ParamID, int) {
        seen = Dialog(mainMap) && IsWindowVisible(Dialog(mainMap));
    };
    Close();
    EXPECT_TRUE(seen);
    EXPECT_EQ(MSTR(effect->block->GetStr(PANEL_TEXT)), MSTR(_M("new text")));
}

TEST_F(ParameterDialogs, WhatWasOpenIsOpenAgain) {
    Show();
    stage.rollups->SetPanelOpen(0, FALSE);
    stage.rollups->SetPanelOpen(1, TRUE);
    Close();
    Show();
    // Not by itself.
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
    desc.RestoreRolloutState();
    EXPECT_FALSE(stage.rollups->IsPanelOpen(0));
    EXPECT_TRUE(stage.rollups->IsPanelOpen(1));
}

TEST_F(ParameterDialogs, WhatWasOpenIsRememberedOfAWindowThatIsDestroyed) {
    RollupStage other;
    host::EffectRollups otherPlace(other.rollupWindow);
    dialogs.reset(desc.CreateParamDialogs(&otherPlace, effect.get()));
    other.rollups->SetPanelOpen(1, TRUE);
    DestroyWindow(other.window);
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap), nullptr);
    Close();
    Show();
    desc.RestoreRolloutState();
    EXPECT_TRUE(stage.rollups->IsPanelOpen(1));
}

TEST_F(ParameterDialogs, ClassesRememberForThemselves) {
    Show();
    stage.rollups->SetPanelOpen(0, FALSE);
    Close();
    PanelClassDesc another;
    const host::Owned<PanelEffect> other(new PanelEffect(another));
    dialogs.reset(another.CreateParamDialogs(&place, other.get()));
    another.RestoreRolloutState();
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
    Close();
}

TEST_F(ParameterDialogs, TheHostsInvalidateUIShowsAParameterAnew) {
    Show();
    HWND text = GetDlgItem(Dialog(mainMap), SAMPLE_ID_TEXT);
    SetWindowTextW(text, L"disturbed");
    desc.InvalidateUI(&desc.block, PANEL_ON);
    EXPECT_EQ(TextOf(text), L"disturbed");
    desc.InvalidateUI(&desc.block, PANEL_TEXT);
    EXPECT_EQ(TextOf(text), L"text");
    Close();
    EXPECT_EQ(host::App().invalidateUI, nullptr);
}

TEST_F(ParameterDialogs, TheLatestOfTwoPanelsIsFound) {
    Show();
    const RollupStage other;
    host::EffectRollups otherPlace(other.rollupWindow);
    const host::Owned<PanelEffect> second(new PanelEffect(desc));
    host::Owned<SFXParamDlg> more(desc.CreateParamDialogs(&otherPlace, second.get()));
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap)->GetParamBlock(), second->block);
    // Both hear.
    SetWindowTextW(GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_TEXT), L"disturbed");
    desc.InvalidateUI(&desc.block, PANEL_TEXT);
    EXPECT_EQ(TextOf(GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_TEXT)), L"text");
    more.reset();
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap)->GetParamBlock(), effect->block);
    EXPECT_NE(host::App().invalidateUI, nullptr);
}

TEST_F(ParameterDialogs, AnEffectThatIsDestroyedIsLetGo) {
    Show();
    effect.reset();
    EXPECT_EQ(dialogs->GetThing(), nullptr);
    EXPECT_EQ(desc.GetParamMap(&desc.block, mainMap)->GetParamBlock(), nullptr);
    Close();
    EXPECT_EQ(desc.procedure.deletions, 2);
}

TEST_F(ParameterDialogs, AnyNumberOfPanelsLeavesNothingBehind) {
    const auto openAndClose = [&](int round) {
        Show();
        stage.rollups->SetPanelOpen(1, TRUE);
        // Drawing takes the most time.
        if (round % 10 == 0) UpdateWindow(stage.rollupWindow);
        HWND dialog = Dialog(mainMap);
        // In the middle of an edit, a drag of the arrows, or one of the dialog.
        if (round % 3 == 0) {
            SetFocus(GetDlgItem(dialog, SAMPLE_ID_TEXT));
            SetWindowTextW(GetDlgItem(dialog, SAMPLE_ID_TEXT), L"text");
        } else if (round % 3 == 1) {
            Mouse(GetDlgItem(dialog, SAMPLE_ID_ARROWS), WM_LBUTTONDOWN, 3, 2);
            Mouse(GetDlgItem(dialog, SAMPLE_ID_ARROWS), WM_MOUSEMOVE, 3, -40);
        } else {
            Mouse(dialog, WM_LBUTTONDOWN, 300, 60);
        }
        Close();
    };
    // What the system keeps of the first.
    for (int i = 0; i < 6; ++i)
        openAndClose(i);
    const ObjectCounts before = CountObjects();
    const std::size_t registered = host::App().notifications.Registrations().size();
    const int rounds = LeakRounds();
    for (int i = 0; i < rounds; ++i)
        openAndClose(i);
    EXPECT_EQ(CountObjects(), before);
    EXPECT_EQ(host::App().notifications.Registrations().size(), registered);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(theHold.Holding());
    EXPECT_FALSE(host::App().undo.CanUndo());
    EXPECT_EQ(effect->block->GetFloat(PANEL_NUMBER), 72.0F);
    EXPECT_EQ(desc.procedure.deletions, 2 * (6 + rounds));
}

}  // namespace
