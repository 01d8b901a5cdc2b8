#include "ui/win32/scene_data_rollup.h"

#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"

namespace {

using testing::ElementsAre;

constexpr MapID sceneDataMap = 4;

class SceneDataRollup : public PanelTest {
  protected:
    std::string Wildcard() { return host::ToUtf8(Block().GetStr("embedHelpersWildcard"_param)); }
};

TEST_F(SceneDataRollup, HasItsControlsUnderTheirTexts) {
    Open();
    EXPECT_EQ(LabelOf(Control(sceneDataMap, IDC_EMBED_CAMERA)), "Embed Camera Information");
    EXPECT_EQ(LabelOf(Control(sceneDataMap, IDC_EMBED_HELPERS)), "Embed Point Helpers:");
    EXPECT_EQ(ClassOf(Control(sceneDataMap, IDC_HELPER_WILDCARD)), "CustEdit");
    EXPECT_EQ(TextOf(sceneDataMap, IDC_HELPER_WILDCARD), "*");
    Press(sceneDataMap, IDC_EMBED_HELPERS);
    EXPECT_THAT(TabOrder(Dialog(sceneDataMap)),
                ElementsAre(IDC_EMBED_CAMERA, IDC_EMBED_HELPERS, IDC_HELPER_WILDCARD));
}

TEST_F(SceneDataRollup, EachBoxIsItsParameterBothWays) {
    Open();
    for (const auto& [box, id] : {std::pair{IDC_EMBED_CAMERA, "embedCameraInfo"_param},
                                  std::pair{IDC_EMBED_HELPERS, "embedHelpersInfo"_param}}) {
        const bool before = IsChecked(sceneDataMap, box);
        EXPECT_EQ(before, box == IDC_EMBED_CAMERA);
        Press(sceneDataMap, box);
        EXPECT_EQ(Block().GetInt(id) != 0, !before) << box;
        EXPECT_EQ(UndoName(), "Parameter Change");
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_EQ(IsChecked(sceneDataMap, box), before) << box;
        Set(id, !before);
        EXPECT_EQ(IsChecked(sceneDataMap, box), !before) << box;
    }
}

TEST_F(SceneDataRollup, TheWildcardIsEnabledWithItsBox) {
    Open();
    EXPECT_FALSE(IsEnabled(sceneDataMap, IDC_HELPER_WILDCARD));
    Press(sceneDataMap, IDC_EMBED_HELPERS);
    EXPECT_TRUE(IsEnabled(sceneDataMap, IDC_HELPER_WILDCARD));
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_FALSE(IsEnabled(sceneDataMap, IDC_HELPER_WILDCARD));
}

TEST_F(SceneDataRollup, EachKeyInTheWildcardIsStored) {
    Set("embedHelpersInfo"_param, TRUE);
    Open();
    Type(Control(sceneDataMap, IDC_HELPER_WILDCARD), "h");
    EXPECT_EQ(Wildcard(), "h");
    SendMessageW(Control(sceneDataMap, IDC_HELPER_WILDCARD), WM_CHAR, L'*', 1);
    EXPECT_EQ(Wildcard(), "h*");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(Wildcard(), "h");
    EXPECT_EQ(TextOf(sceneDataMap, IDC_HELPER_WILDCARD), "h");
}

}  // namespace
