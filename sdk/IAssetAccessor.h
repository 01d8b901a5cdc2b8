// By this the host's asset tracking reads and retargets one file of an object.
#pragma once

#include "AssetUser.h"

class IAssetAccessor {
  public:
    virtual ~IAssetAccessor() = default;

    virtual MaxSDK::AssetManagement::AssetUser GetAsset() const = 0;
    // False when the object keeps its old file.
    virtual bool SetAsset(const MaxSDK::AssetManagement::AssetUser& asset) = 0;
    // False for a file that the object makes.
    virtual bool IsInputAsset() const = 0;
    virtual MaxSDK::AssetManagement::AssetType GetAssetType() const = 0;
    // What the file is to the object, for the user; the last two may be null.
    virtual const MCHAR* GetAssetDesc() const = 0;
    virtual const MCHAR* GetAssetTypeIcon() const = 0;
    virtual const MCHAR* GetAssetClientDesc() const = 0;
    virtual bool IsAssetPathWritable() const = 0;
    virtual const MCHAR* GetRetargetErrorMsg() const = 0;
};
