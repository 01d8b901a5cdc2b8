// A file that the scene needs or makes, and what kind of file it is.
#pragma once

#include "strclass.h"

namespace MaxSDK::AssetManagement {

enum AssetType : int {
    kOtherAsset = 0,
    kRenderOutput = 8,
};

class AssetUser {
  public:
    AssetUser() = default;
    AssetUser(const MSTR& fileName, AssetType type) : fileName_(fileName), type_(type) {}

    const MSTR& GetFileName() const { return fileName_; }
    AssetType GetType() const { return type_; }

  private:
    MSTR fileName_;
    AssetType type_ = kOtherAsset;
};

}  // namespace MaxSDK::AssetManagement
