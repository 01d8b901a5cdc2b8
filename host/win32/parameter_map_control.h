// One parameter's control in a dialog: how it shows the parameter's value, and how the user's
// change of it comes back.
#pragma once

#include <memory>

#include <iparamb2.h>

namespace host {

// Of the text that a control gives a parameter, with the terminator; what is longer is cut.
constexpr int PARAMETER_TEXT_UNITS = 256;

class ParameterMapControl {
  public:
    explicit ParameterMapControl(const ParamDef& def) : def_(def) {}
    virtual ~ParameterMapControl() = default;
    ParameterMapControl(const ParameterMapControl&) = delete;
    ParameterMapControl& operator=(const ParameterMapControl&) = delete;

    const ParamDef& Def() const { return def_; }
    virtual void Show(IParamBlock2& block) = 0;
    // Of a table that entry alone has changed since it was shown.
    virtual void ShowEntry(IParamBlock2& block, int /*entry*/) { Show(block); }
    // Not more than once with the same argument.
    virtual void Enable(bool on) = 0;
    // A message of a control of the dialog to the dialog: if it tells of the user's change of this
    // parameter, the block gets it, in one step of undo. What hears of the change may close the
    // dialog, and so destroy this.
    virtual void Take(UINT message, WPARAM wParam, IParamBlock2& block) = 0;
    // The dialog closes: takes back a change that the user hasn't ended.
    virtual void GiveUp() {}

  private:
    // The descriptor lives as long as the library.
    const ParamDef& def_;
};

// Null when the dialog has no such control. `strings` has the texts of the choices.
std::unique_ptr<ParameterMapControl> BindParameter(HWND dialog, const ParamDef& def,
                                                   HINSTANCE strings);

}  // namespace host
