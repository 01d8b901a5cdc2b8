#include "plugin/output_asset_accessor.h"

#include "tests/effect/effect_fixture.h"

namespace {

using MaxSDK::AssetManagement::AssetUser;
using MaxSDK::AssetManagement::kOtherAsset;
using MaxSDK::AssetManagement::kRenderOutput;

class OutputAssetAccessor : public EffectTest {
  protected:
    plugin::PSDOutputAssetAccessor accessor{*effect};
};

TEST_F(OutputAssetAccessor, ItsAssetIsTheFilename) {
    SetFilename(File("a.psd"));
    EXPECT_EQ(accessor.GetAsset().GetFileName(), Text(File("a.psd")));
    EXPECT_EQ(accessor.GetAsset().GetType(), kRenderOutput);
}

TEST_F(OutputAssetAccessor, SettingItsAssetSetsTheFilename) {
    EXPECT_TRUE(accessor.SetAsset(AssetUser(Text(File("b.psd")), kOtherAsset)));
    EXPECT_EQ(MSTR(effect->pblock->GetStr("filename"_param)), Text(File("b.psd")));
    EXPECT_EQ(accessor.GetAsset().GetType(), kRenderOutput);
}

TEST_F(OutputAssetAccessor, DescribesAFileThatTheRenderWrites) {
    EXPECT_FALSE(accessor.IsInputAsset());
    EXPECT_EQ(accessor.GetAssetType(), 8);
    EXPECT_EQ(MSTR(accessor.GetAssetDesc()), MSTR(_M("Render Output")));
    EXPECT_EQ(accessor.GetAssetTypeIcon(), nullptr);
    EXPECT_EQ(MSTR(accessor.GetAssetClientDesc()), MSTR(_M("veltrane")));
    EXPECT_TRUE(accessor.IsAssetPathWritable());
    EXPECT_EQ(accessor.GetRetargetErrorMsg(), nullptr);
}

TEST_F(OutputAssetAccessor, WithoutTheBlockThereIsNoFile) {
    effect->DeleteReference(0);
    EXPECT_TRUE(accessor.GetAsset().GetFileName().isNull());
    EXPECT_TRUE(accessor.SetAsset(AssetUser(Text(File("b.psd")), kRenderOutput)));
}

}  // namespace
