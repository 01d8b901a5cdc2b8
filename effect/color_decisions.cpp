#include "effect/color_decisions.h"

#include <gamma.h>
#include <iparamb2.h>
#include <maxapi.h>

#include "effect/renderer_kinds.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

bool ReachesElements(int config) {
    return config == correctChosenElements || config == correctAllElements;
}

}  // namespace

ColorDecisions DecideColors(IParamBlock2& pblock) {
    const int gammaConfig = pblock.GetInt("gammaCorrectConfig"_param);
    ColorDecisions decisions;
    decisions.gammaActive = pblock.GetInt("gammaCorrectRender"_param) && gammaMgr.enable &&
                            gammaMgr.fileOutGamma != 1.0F && pblock.GetInt("bitDepth"_param) != 32;
    decisions.gammaToRender = decisions.gammaActive && gammaConfig != correctByAdjustmentLayer;
    decisions.gammaToElements = decisions.gammaActive && ReachesElements(gammaConfig);
    decisions.ccActive = pblock.GetInt("vrayColorCorrections"_param) &&
                         UsesVRayFrameBuffer(GetCOREInterface()->GetCurrentRenderer());
    decisions.ccToElements =
        decisions.ccActive && ReachesElements(pblock.GetInt("colorCorrectConfig"_param));
    return decisions;
}

}  // namespace effect
