// The mode in which the user picks objects in a view, one after the other, for the list of objects.
#pragma once

#include <maxapi.h>

#include <functional>

#include "effect/psd_output.h"

namespace ui {

// Nothing that is called by the host throws.
class PSDOutputPickModeCallback : public PickModeCallback, public PickNodeCallback {
  public:
    // An object was added; the mode was entered or left. May be empty; they throw nothing but what
    // tells that memory ran out.
    std::function<void()> onPick;
    std::function<void()> onModeChange;

    // Whose list grows; null for none. It may be destroyed meanwhile: then nothing can be picked.
    void Edit(effect::PSDOutput* edited) { effect = edited; }

    // Enters the mode, or leaves it when it is on.
    void Toggle();
    // Leaves the mode when it is on.
    void Leave();
    bool IsActive() const { return active; }

    BOOL HitTest(IObjParam* ip, HWND hWnd, ViewExp* vpt, IPoint2 m, int flags) override;
    BOOL Pick(IObjParam* ip, ViewExp* vpt) override;
    void EnterMode(IObjParam* ip) override;
    void ExitMode(IObjParam* ip) override;
    PickNodeCallback* GetFilter() override { return this; }

    // Objects that aren't in the list yet, but for what cameras and lights are aimed at.
    BOOL Filter(INode* node) override;

  private:
    IParamBlock2* Block() const;
    void SetActive(bool on);

    effect::PSDOutput* effect = nullptr;
    bool active = false;
};

}  // namespace ui
