#include "plugin/output_asset_accessor.h"

#include "effect/psd_output.h"
#include "plugin/parameters.h"

namespace plugin {

using MaxSDK::AssetManagement::AssetUser;

AssetUser PSDOutputAssetAccessor::GetAsset() const {
    return effect->pblock ? effect->pblock->GetAssetUser("filename"_param) : AssetUser();
}

bool PSDOutputAssetAccessor::SetAsset(const AssetUser& asset) {
    if (effect->pblock) effect->pblock->SetValue("filename"_param, 0, asset);
    return true;
}

}  // namespace plugin
