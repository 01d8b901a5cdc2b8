#include "plugin/block_changes.h"

namespace plugin {

void ParameterChanged(effect::PSDOutput&, ParamID) {}

}  // namespace plugin
