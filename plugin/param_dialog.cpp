#include "plugin/param_dialog.h"

#include <iparamb2.h>

#include "effect/psd_output.h"
#include "plugin/parameters.h"
#include "plugin/scene_file_state.h"

namespace plugin {

SFXParamDlg* CreateParamDialog(effect::PSDOutput& effect, IRendParams* ip) {
    if (!effect.pblock) return nullptr;
    effect.pblock->SetValue("unnamed37"_param, 0, FALSE);
    SetCurrentInstance(&effect);
    ClassDesc2& descriptor = *effect.pblock->GetDesc()->cd;
    SFXParamDlg* dialog = descriptor.CreateParamDialogs(ip, &effect);
    descriptor.RestoreRolloutState();
    return dialog;
}

}  // namespace plugin
