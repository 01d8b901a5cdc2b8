// One rollup, with its controls bound to the parameters of a block both ways: it shows what is in
// the block whoever changes it, and what the user changes goes there as a step of undo, "Parameter
// Change".
//
// What the mouse does with an empty part of the dialog scrolls the rollups. While the user's
// procedure runs, the map may be destroyed.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include <IRendParams.h>
#include <iparamm2.h>

#include "host/win32/parameter_map_control.h"

namespace host {

class ParameterMap final : public IParamMap2 {
  public:
    // Of the block's own descriptor. `place` must outlive the map.
    ParameterMap(IParamBlock2& block, const ParamBlockDesc2::map_spec& spec, IRendParams& place);
    // Closes the rollup. The user's procedure gets WM_DESTROY before its DeleteThis.
    ~ParameterMap();
    ParameterMap(const ParameterMap&) = delete;
    ParameterMap& operator=(const ParameterMap&) = delete;

    void UpdateUI(TimeValue t) override;
    void Invalidate(ParamID id, int tabIndex) override;
    // Null once the dialog is destroyed.
    HWND GetHWnd() override { return dialog_; }
    MapID GetMapID() override { return spec_.map_id; }
    // Null when the block is destroyed.
    IParamBlock2* GetParamBlock() override;
    IRollupWindow* GetIRollup() override { return place_.GetRollupWindow(); }
    void Enable(ParamID id, BOOL onOff, int tabIndex) override;

    // Adds the rollup. Without a window, GetHWnd() null, when the dialog can't be made.
    void Open();
    // The text that is being typed is given to the block, as when the user leaves the control.
    void GiveText();
    ParamMap2UserDlgProc* Procedure() const { return spec_.dlgProc; }
    // Whether the user sees the dialog; as it was at last once it is destroyed.
    bool IsOpen() const;
    void SetOpen(bool open);
    // Another block of the same descriptor takes the place of this one.
    void SetParamBlock(IParamBlock2* block);

    // For the dialog's procedure alone: every message, once the dialog is bound.
    void Bind(HWND dialog);
    INT_PTR OnMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

  private:
    class BlockReference;
    struct Binding {
        std::unique_ptr<ParameterMapControl> control;
        // By the map's user.
        bool wanted = true;
        bool enabled = true;
    };

    TimeValue Now() const { return place_.GetTime(); }
    void OnUserChange(UINT message, WPARAM wParam);
    void OwnPart(UINT message, WPARAM wParam, LPARAM lParam);
    void ShowEnabling(Binding& binding);
    void ShowAllEnabling();

    const ParamBlockDesc2& desc_;
    ParamBlockDesc2::map_spec spec_;
    IRendParams& place_;
    std::unique_ptr<BlockReference> block_;
    HWND dialog_ = nullptr;
    bool wasOpen_ = false;
    // In the descriptor's order.
    std::vector<Binding> bindings_;
    // Tells those who called out from here whether the map is still there.
    std::shared_ptr<bool> living_ = std::make_shared<bool>(true);
};

}  // namespace host
