// Parameter maps: one rollup, with its controls bound to parameters of a block.
#pragma once

#include "interval.h"
#include "iparamb2.h"

class IRollupWindow;

class IParamMap2 {
  public:
    // The controls show the block's values anew, at once.
    virtual void UpdateUI(TimeValue t) = 0;
    // Those of one parameter do.
    virtual void Invalidate(ParamID id, int tabIndex = 0) = 0;
    // The rollup's dialog.
    virtual HWND GetHWnd() = 0;
    virtual MapID GetMapID() = 0;
    virtual IParamBlock2* GetParamBlock() = 0;
    // The window that the rollup is in; null when it is in none.
    virtual IRollupWindow* GetIRollup() = 0;
    // A parameter's controls. They are enabled when this and the parameters that enable them
    // (p_enable_ctrls) agree.
    virtual void Enable(ParamID id, BOOL onOff, int tabIndex = 0) = 0;

  protected:
    ~IParamMap2() = default;
};

// What a dialog does beyond its bound controls.
class ParamMap2UserDlgProc {
  public:
    virtual ~ParamMap2UserDlgProc() = default;
    // Every message of the dialog, after the map has done its part; WM_INITDIALOG comes when all
    // controls are bound and show the block's values, and only WM_MEASUREITEM, of owner-drawn
    // controls, may come before it. TRUE when it was handled; what WM_NOTIFY and the owner-draw
    // messages answer is the result.
    virtual INT_PTR DlgProc(TimeValue t, IParamMap2* map, HWND hWnd, UINT msg, WPARAM wParam,
                            LPARAM lParam) = 0;
    // The map is destroyed.
    virtual void DeleteThis() = 0;
    // The map shows another object.
    virtual void SetThing(ReferenceTarget*) {}
    // How long what is shown holds.
    virtual Interval GetValidity() { return FOREVER; }
};
