#include "ui/layer_controls.h"

#include <rendererclasses.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

using ControlIDs = std::set<int>;

// Of the pane, apart from the arrows.
const ControlIDs ofTheList{1043, 1091, 1079};
const ControlIDs ofALayer{1048, 1112, 1114, 1063, 1083, 1092, 1159, 1087};
const ControlIDs ofLayerOutput{1058, 1056, 1057, 1045, 1084, 1085, 1086, 1059};

ControlIDs operator+(ControlIDs left, const ControlIDs& right) {
    left.insert(right.begin(), right.end());
    return left;
}

class LayerControls : public ElementFrameTest {
  protected:
    LayerControls() {
        for (const char* name : {"a", "b", "c"})
            AddElement(unknownElement, name);
    }
    ui::LayerControls Controls(int row, int rows = 3) {
        return ui::UpdateLayerControls(*effect, row, rows);
    }
    ui::LayerControl Control(int id, int row, int rows = 3) {
        for (const ui::LayerControl& control : Controls(row, rows).controls) {
            if (control.id == id) return control;
        }
        throw std::logic_error("no such control");
    }
    ControlIDs Enabled(int row, int rows = 3) {
        ControlIDs ids;
        for (const ui::LayerControl& control : Controls(row, rows).controls) {
            if (control.enabled) ids.insert(control.id);
        }
        return ids;
    }
    ControlIDs Checked(int row) {
        ControlIDs ids;
        for (const ui::LayerControl& control : Controls(row).controls) {
            if (control.checked.value_or(false)) ids.insert(control.id);
        }
        return ids;
    }
    int Get(int row, ParamID id) { return effect->Layer(0, row)->pblock->GetInt(id); }
    void SetRow(int row, ParamID id, int value) {
        effect->Layer(0, row)->pblock->SetValue(id, 0, value);
    }
};

TEST_F(LayerControls, AreEachThereOnce) {
    std::vector<int> ids;
    for (const ui::LayerControl& control : Controls(0).controls)
        ids.push_back(control.id);
    EXPECT_THAT(ids, UnorderedElementsAreArray(ofTheList + ofALayer + ofLayerOutput +
                                               ControlIDs{1068, 1069, 1160, 1060}));
}

TEST_F(LayerControls, AreEnabledForALayer) {
    EXPECT_EQ(Enabled(1), ofTheList + ofALayer + ofLayerOutput + ControlIDs({1068, 1069}));
}

TEST_F(LayerControls, OfOneThatBecomesAChannelAreFewer) {
    SetRow(1, "outputAs"_layerParam, 1);
    EXPECT_EQ(Enabled(1), ofTheList + ofALayer + ControlIDs({1068, 1069}));
}

TEST_F(LayerControls, WithoutALayerAreTheListsOwn) {
    EXPECT_EQ(Enabled(-1), ofTheList);
    EXPECT_EQ(Enabled(-1, 0), ofTheList);
    // The first entry stays behind as a null.
    effect->Layer(0, 0)->DeleteThis();
    EXPECT_EQ(Enabled(0), ofTheList + ControlIDs{1068});
}

TEST_F(LayerControls, AreDisabledWhenNoElementsGoOut) {
    Set("createRenderElementLayers"_param, FALSE);
    EXPECT_THAT(Enabled(1), IsEmpty());
}

TEST_F(LayerControls, MoveTheRowWhereThereIsAnother) {
    const auto arrows = [this](int row, int rows) {
        return std::pair{Control(1069, row, rows).enabled, Control(1068, row, rows).enabled};
    };
    EXPECT_EQ(arrows(0, 3), std::pair(false, true));
    EXPECT_EQ(arrows(1, 3), std::pair(true, true));
    EXPECT_EQ(arrows(2, 3), std::pair(true, false));
    EXPECT_EQ(arrows(0, 1), std::pair(false, false));
    EXPECT_EQ(arrows(-1, 3), std::pair(false, false));
    EXPECT_EQ(arrows(-1, 0), std::pair(false, false));
}

TEST_F(LayerControls, HideTheArrowsWhenTheListIsKeptSorted) {
    const auto hidden = [this] {
        ControlIDs ids;
        for (const ui::LayerControl& control : Controls(1).controls) {
            if (!control.shown) ids.insert(control.id);
        }
        return ids;
    };
    EXPECT_THAT(hidden(), IsEmpty());
    Set("autoSort"_param, TRUE);
    EXPECT_EQ(hidden(), ControlIDs({1068, 1069}));
    EXPECT_EQ(Enabled(1), ofTheList + ofALayer + ofLayerOutput);
}

TEST_F(LayerControls, LetTheElementChooseGammaWhereElementsDo) {
    const auto prepare = [this] {
        gammaMgr.enable = TRUE;
        Set("bitDepth"_param, 16);
        Set("gammaCorrectRender"_param, TRUE);
        Set("gammaCorrectConfig"_param, 1);
        SetRow(1, "outputAs"_layerParam, 0);
    };
    prepare();
    EXPECT_TRUE(Control(1160, 1).enabled);
    EXPECT_FALSE(Control(1160, -1).enabled);
    gammaMgr.enable = FALSE;
    EXPECT_FALSE(Control(1160, 1).enabled);
    prepare();
    Set("bitDepth"_param, 32);
    EXPECT_FALSE(Control(1160, 1).enabled);
    prepare();
    Set("gammaCorrectRender"_param, FALSE);
    EXPECT_FALSE(Control(1160, 1).enabled);
    for (const int config : {0, 2, 3}) {
        prepare();
        Set("gammaCorrectConfig"_param, config);
        EXPECT_FALSE(Control(1160, 1).enabled) << config;
    }
    prepare();
    SetRow(1, "outputAs"_layerParam, 1);
    EXPECT_FALSE(Control(1160, 1).enabled);
    prepare();
    EXPECT_TRUE(Control(1160, 1).enabled);
}

TEST_F(LayerControls, LetTheElementChooseCorrectionsWhereElementsDo) {
    const auto prepare = [this] {
        UseVRay();
        Set("vrayColorCorrections"_param, TRUE);
        Set("colorCorrectConfig"_param, 1);
        SetRow(1, "outputAs"_layerParam, 0);
    };
    prepare();
    EXPECT_TRUE(Control(1060, 1).enabled);
    EXPECT_FALSE(Control(1060, -1).enabled);
    Set("vrayColorCorrections"_param, FALSE);
    EXPECT_FALSE(Control(1060, 1).enabled);
    for (const int config : {0, 2, 3}) {
        prepare();
        Set("colorCorrectConfig"_param, config);
        EXPECT_FALSE(Control(1060, 1).enabled) << config;
    }
    prepare();
    SetRow(1, "outputAs"_layerParam, 1);
    EXPECT_FALSE(Control(1060, 1).enabled);
    prepare();
    EXPECT_TRUE(Control(1060, 1).enabled);
    UseRenderer(VRAY_CLASS_ID);
    EXPECT_FALSE(Control(1060, 1).enabled) << "V-Ray without its frame buffer";
}

TEST_F(LayerControls, ShowTheValuesOfTheLayer) {
    EXPECT_EQ(Checked(0), ControlIDs({1048, 1058, 1056, 1092, 1112, 1160}));
    EXPECT_EQ(Controls(1).name, MSTR(_M("b")));
    EXPECT_EQ(Controls(1).blendingMode, 0);
    SetRow(1, "blendingMode"_layerParam, 16);
    SetRow(1, "outputAs"_layerParam, 1);
    SetRow(1, "enabled"_layerParam, FALSE);
    SetRow(1, "gammaCorrect"_layerParam, FALSE);
    SetRow(1, "colorCorrect"_layerParam, TRUE);
    EXPECT_EQ(Checked(1), ControlIDs({1058, 1056, 1092, 1114, 1060}));
    EXPECT_EQ(Controls(1).blendingMode, 16);
}

TEST_F(LayerControls, WithoutALayerShowNothing) {
    EXPECT_THAT(Checked(-1), IsEmpty());
    EXPECT_TRUE(Controls(-1).name.isNull());
    EXPECT_EQ(Controls(-1).blendingMode, -1);
}

TEST_F(LayerControls, OfADeletedElementShowThatItIs) {
    Elements().Remove(Elements().GetRenderElement(0));
    EXPECT_EQ(Controls(0).name, MSTR(_M("<deleted>")));
    EXPECT_TRUE(Control(1048, 0).enabled);
    EXPECT_FALSE(ui::RenameElement(*effect, 0, _M("new")));
}

TEST_F(LayerControls, OfWhichTheCheckBoxesSetTheirParameter) {
    const std::map<int, ParamID> parameters = {
        {1048, "enabled"_layerParam},
        {1056, "transparency"_layerParam},
        {1057, "mask"_layerParam},
        {1058, "visible"_layerParam},
        {1059, "groupWithPrevious"_layerParam},
        {1060, "colorCorrect"_layerParam},
        {1092, "premultiply"_layerParam},
        {1159, "split"_layerParam},
        {1160, "gammaCorrect"_layerParam},
    };
    const auto values = [&] {
        std::map<int, int> all;
        for (const auto& [control, id] : parameters)
            all[control] = Get(1, id);
        return all;
    };
    for (const auto& [control, id] : parameters) {
        for (const bool checked : {true, false, true}) {
            std::map<int, int> expected = values();
            expected[control] = checked;
            EXPECT_TRUE(ui::ClickLayerControl(*effect, 1, control, checked));
            EXPECT_EQ(values(), expected) << control;
            EXPECT_EQ(Control(control, 1).checked, std::optional(checked)) << control;
        }
    }
    EXPECT_EQ(Checked(0), ControlIDs({1048, 1058, 1056, 1092, 1112, 1160})) << "no other layer's";
}

TEST_F(LayerControls, OfWhichTheRadiosSetWhatTheElementBecomes) {
    EXPECT_TRUE(ui::ClickLayerControl(*effect, 1, 1114, true));
    EXPECT_EQ(Get(1, "outputAs"_layerParam), 1);
    EXPECT_TRUE(ui::ClickLayerControl(*effect, 1, 1112, true));
    EXPECT_EQ(Get(1, "outputAs"_layerParam), 0);
}

TEST_F(LayerControls, ThatAreNotCheckedHaveNoCheckMark) {
    for (const int control :
         {1043, 1091, 1079, 1068, 1069, 1063, 1045, 1083, 1084, 1085, 1086, 1087}) {
        EXPECT_EQ(Control(control, 1).checked, std::nullopt) << control;
        EXPECT_FALSE(ui::ClickLayerControl(*effect, 1, control, true)) << control;
    }
}

TEST_F(LayerControls, OfARowWithoutALayerChangeNothing) {
    for (const int row : {-1, 3}) {
        EXPECT_FALSE(ui::ClickLayerControl(*effect, row, 1058, false));
        EXPECT_FALSE(ui::ChooseBlendMode(*effect, row, 3));
        EXPECT_FALSE(ui::RenameElement(*effect, row, _M("new")));
        EXPECT_FALSE(ui::TakeTypedElementName(*effect, row, _M("new")));
    }
}

TEST_F(LayerControls, SetTheBlendModeThatIsSelected) {
    EXPECT_TRUE(ui::ChooseBlendMode(*effect, 1, 26));
    EXPECT_EQ(Get(1, "blendingMode"_layerParam), 26);
    EXPECT_FALSE(ui::ChooseBlendMode(*effect, 1, -1));
    EXPECT_EQ(Get(1, "blendingMode"_layerParam), 26);
}

TEST_F(LayerControls, NameTheElement) {
    EXPECT_TRUE(ui::RenameElement(*effect, 1, _M("Glow")));
    EXPECT_EQ(MSTR(Elements().GetRenderElement(1)->ElementName()), MSTR(_M("Glow")));
    EXPECT_FALSE(ui::RenameElement(*effect, 1, nullptr));
    EXPECT_FALSE(ui::RenameElement(*effect, 1, _M("Glow"))) << "it has that name";
    EXPECT_EQ(MSTR(Elements().GetRenderElement(1)->ElementName()), MSTR(_M("Glow")));
}

TEST_F(LayerControls, LeaveALongerNameAloneThatNobodyChanged) {
    const std::basic_string<MCHAR> name(300, _M('n'));
    Elements().GetRenderElement(1)->SetElementName(name.c_str());
    EXPECT_FALSE(ui::TakeTypedElementName(*effect, 1, MSTR(name)));
    EXPECT_EQ(MSTR(Elements().GetRenderElement(1)->ElementName()), MSTR(name));
}

TEST_F(LayerControls, TakeUpTo255UnitsOfANameFromTheField) {
    const std::basic_string<MCHAR> name(256, _M('n'));
    EXPECT_TRUE(ui::TakeTypedElementName(*effect, 1, MSTR(name)));
    EXPECT_EQ(MSTR(Elements().GetRenderElement(1)->ElementName()), MSTR(name.substr(0, 255)));
    EXPECT_FALSE(ui::TakeTypedElementName(*effect, 1, MSTR(name))) << "it has what counts of it";
    EXPECT_TRUE(ui::RenameElement(*effect, 1, name.c_str()));
    EXPECT_EQ(MSTR(Elements().GetRenderElement(1)->ElementName()), MSTR(name)) << "from the list";
}

TEST_F(LayerControls, ShowTheBlendModeOfARow) {
    EXPECT_TRUE(ui::ChooseBlendMode(*effect, 1, 7));
    EXPECT_EQ(ui::BlendModeOfRow(*effect, 1), 7);
    EXPECT_EQ(ui::BlendModeOfRow(*effect, -1), -1);
}

}  // namespace
