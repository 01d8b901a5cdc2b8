#include "ui/win32/gbuffer_rollup.h"

#include <tuple>

#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"

namespace {

using testing::ElementsAre;

constexpr MapID gbufferMap = 6;

class GBufferRollup : public PanelTest {};

TEST_F(GBufferRollup, EachBoxIsItsParameterBothWays) {
    Set("bitDepth"_param, 32);
    Open();
    for (const auto& [box, text, id] :
         {std::tuple{IDC_GBUFFER_NODE_ID, "Object ID", "createNodeIDLayer"_param},
          std::tuple{IDC_GBUFFER_MATERIAL_ID, "Material Effects", "createMtlIDLayer"_param},
          std::tuple{IDC_GBUFFER_RENDER_ID, "Node Render ID", "createNodeRenderIDLayer"_param},
          std::tuple{IDC_GBUFFER_NORMAL, "Normal", "createNormalLayer"_param},
          std::tuple{IDC_GBUFFER_UNCLAMPED, "Non-Clamped Color",
                     "createNonClampedColorLayer"_param}}) {
        EXPECT_EQ(ClassOf(Control(gbufferMap, box)), "Button") << text;
        EXPECT_EQ(LabelOf(Control(gbufferMap, box)), text);
        EXPECT_TRUE(IsEnabled(gbufferMap, box)) << text;
        EXPECT_FALSE(IsChecked(gbufferMap, box)) << text;
        Press(gbufferMap, box);
        EXPECT_EQ(Block().GetInt(id), TRUE) << text;
        EXPECT_EQ(UndoName(), "Parameter Change") << text;
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_FALSE(IsChecked(gbufferMap, box)) << text;
        Set(id, TRUE);
        EXPECT_TRUE(IsChecked(gbufferMap, box)) << text;
    }
}

TEST_F(GBufferRollup, ColorsAboveWhiteAreFor32BitsAlone) {
    Open();
    EXPECT_FALSE(IsEnabled(gbufferMap, IDC_GBUFFER_UNCLAMPED));
    for (const int depth : {32, 8, 32, 16}) {
        Set("bitDepth"_param, depth);
        EXPECT_EQ(IsEnabled(gbufferMap, IDC_GBUFFER_UNCLAMPED), depth == 32) << depth;
    }
    Close();
    Set("bitDepth"_param, 32);
    Open();
    EXPECT_TRUE(IsEnabled(gbufferMap, IDC_GBUFFER_UNCLAMPED));
}

TEST_F(GBufferRollup, ShowsAnotherEffectFromTheMomentItIsTold) {
    Open();
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    other->pblock->SetValue("bitDepth"_param, 0, 32);
    dialogs->SetThing(other);
    EXPECT_TRUE(IsEnabled(gbufferMap, IDC_GBUFFER_UNCLAMPED));
    dialogs->SetThing(effect);
    EXPECT_FALSE(IsEnabled(gbufferMap, IDC_GBUFFER_UNCLAMPED));
}

TEST_F(GBufferRollup, TheTabKeyGoesFromRowToRow) {
    Set("bitDepth"_param, 32);
    Open();
    EXPECT_THAT(TabOrder(Dialog(gbufferMap)),
                ElementsAre(IDC_GBUFFER_NODE_ID, IDC_GBUFFER_MATERIAL_ID, IDC_GBUFFER_RENDER_ID,
                            IDC_GBUFFER_NORMAL, IDC_GBUFFER_UNCLAMPED));
}

}  // namespace
