// Shows the effect's output path to the host's asset tracking, which may point it elsewhere.
#pragma once

#include <IAssetAccessor.h>

namespace effect {
class PSDOutput;
}

namespace plugin {

class PSDOutputAssetAccessor final : public IAssetAccessor {
  public:
    // The effect must outlive the accessor.
    explicit PSDOutputAssetAccessor(effect::PSDOutput& owner) : effect(&owner) {}

    // Of no file without the effect's block.
    MaxSDK::AssetManagement::AssetUser GetAsset() const override;
    // Always true.
    bool SetAsset(const MaxSDK::AssetManagement::AssetUser& asset) override;
    bool IsInputAsset() const override { return false; }
    MaxSDK::AssetManagement::AssetType GetAssetType() const override {
        return MaxSDK::AssetManagement::kRenderOutput;
    }
    const MCHAR* GetAssetDesc() const override { return _M("Render Output"); }
    const MCHAR* GetAssetTypeIcon() const override { return nullptr; }
    const MCHAR* GetAssetClientDesc() const override { return _M("veltrane"); }
    bool IsAssetPathWritable() const override { return true; }
    const MCHAR* GetRetargetErrorMsg() const override { return nullptr; }

  private:
    effect::PSDOutput* effect;
};

}  // namespace plugin
