// What follows from a change of a parameter of the effect: which controls show something else.
#pragma once

#include <iparamb2_types.h>

namespace effect {
class PSDOutput;
}

namespace plugin {

void ParameterChanged(effect::PSDOutput& effect, ParamID id);

}  // namespace plugin
