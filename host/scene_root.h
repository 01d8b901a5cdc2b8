// The node that those without a parent hang from.
#pragma once

#include <inode.h>

#include "host/scene.h"
#include "host/scene_tree.h"

namespace host {

class RootNode final : public INode {
  public:
    explicit RootNode(Scene& scene) : scene_(scene) {}
    ~RootNode() override = default;
    // It stays as long as its scene.
    void DeleteThis() override {}

    const MCHAR* GetName() override { return _M("Scene Root"); }
    USHORT GetRenderID() override { return 65535; }
    INode* GetParentNode() override { return nullptr; }
    BOOL IsRootNode() override { return TRUE; }
    int NumberOfChildren() override { return static_cast<int>(scene_.TopNodes().size()); }
    INode* GetChildNode(int index) override { return At(scene_.TopNodes(), index); }
    BOOL IsGroupHead() override { return FALSE; }
    BOOL IsGroupMember() override { return FALSE; }
    BOOL IsNodeHidden(BOOL) override { return FALSE; }
    const ObjectState& EvalWorldState(TimeValue, BOOL) override { return shown_; }
    Matrix3 GetNodeTM(TimeValue, Interval*) override { return {}; }
    BOOL GetUserPropBool(const MSTR&, BOOL&) override { return FALSE; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    Scene& scene_;
    ObjectState shown_;
};

}  // namespace host
