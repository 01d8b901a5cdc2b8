// The two block descriptors, built from the table of parameters.
#pragma once

#include <iparamb2.h>

#include <memory>

namespace plugin {

// Each is added to `owner` and must live as long. `accessor` is given to the marked parameters; not
// owned, null for none.
std::unique_ptr<ParamBlockDesc2> MakeEffectBlockDesc(ClassDesc2& owner, PBAccessor* accessor);
std::unique_ptr<ParamBlockDesc2> MakeLayerBlockDesc(ClassDesc2& owner);

}  // namespace plugin
