// Whether what came out empty is left out of the document.
#pragma once

#include <iparamb2_types.h>

class IParamBlock2;

namespace effect {

// Makes the answer ask the host for what it renders.
constexpr int timeTypeOfHost = -1;

// `filter` is one of the filterEmpty... parameters; `timeType` as Interface::GetRendTimeType gives.
// In an animation the filters stay off unless the user wants them there too, so that all frames
// have the same layers.
bool IsFilterOn(IParamBlock2& pblock, ParamID filter, int timeType);

}  // namespace effect
