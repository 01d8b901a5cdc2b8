#include "effect/empty_filters.h"

#include <iparamb2.h>
#include <maxapi.h>

#include "plugin/parameters.h"

namespace effect {

bool IsFilterOn(IParamBlock2& pblock, ParamID filter, int timeType) {
    if (!pblock.GetInt(filter)) return false;
    if (timeType == timeTypeOfHost) timeType = GetCOREInterface()->GetRendTimeType();
    return timeType == REND_TIMESINGLE ||
           pblock.GetInt("filterEmptyLayersAndChannelsForAnimations"_param) != 0;
}

}  // namespace effect
