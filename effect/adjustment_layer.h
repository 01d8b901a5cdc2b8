// An adjustment layer as the groups of the layer stack add it.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>

#include "psdbuilder/psdbuilder.h"

namespace effect {

// Visible and not clipped. `unicodeName` may be null, `mask` empty.
void AddAdjustment(psdbuilder::PSDBuilder& builder, const char* name, const char16_t* unicodeName,
                   std::uint32_t blendKey,
                   boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock> adjustment,
                   const psdfile::PSDChannelImageDataSourcePtr& mask = {});

}  // namespace effect
