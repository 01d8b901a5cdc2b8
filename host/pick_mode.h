// The mode in which the user's next click in a view of the scene picks a node for someone.
#pragma once

#include <functional>

#include <maxapi.h>

namespace host {

class PickMode final : public ViewExp {
  public:
    // What a view shows at a point; null for nothing. Empty: the host has no view. A view may show
    // several things there, and gives the front one that the filter lets through.
    std::function<INode*(HWND view, IPoint2 point, PickNodeCallback* filter)> nodeAt;

    // Leaves the mode that is on; null leaves it for none. The callback isn't owned.
    void Set(PickModeCallback* callback);
    PickModeCallback* Callback() const { return callback_; }

    // The user moved to the point, and what is there could be picked.
    bool Hit(HWND view, IPoint2 point);
    // The user clicked there. Ends the mode when its callback wants that.
    void Click(HWND view, IPoint2 point);
    // A right click, or the escape key.
    void Cancel() { Set(nullptr); }

    INode* Find(HWND view, IPoint2 point, PickNodeCallback* filter);
    INode* GetClosestHit() override { return hit_; }

  private:
    PickModeCallback* callback_ = nullptr;
    INode* hit_ = nullptr;
};

}  // namespace host
