// Without windows nothing shows parameters.
#include <iparamb2.h>

SFXParamDlg* ClassDesc2::CreateParamDialogs(IRendParams* /*ip*/, SpecialFX* /*effect*/) {
    return nullptr;
}

void ClassDesc2::RestoreRolloutState() {}

IParamMap2* ClassDesc2::GetParamMap(const ParamBlockDesc2* /*desc*/, MapID /*map*/) const {
    return nullptr;
}
