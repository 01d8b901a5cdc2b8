// What one render element puts into the document.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "effect/element_pixels.h"
#include "effect/frame.h"
#include "psdbuilder/compositor.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

class PSDOutputLayer;

// Elements that merge into the next one that makes a layer; first one lowest.
using PendingLayers = std::vector<boost::shared_ptr<psdbuilder::CompositorLayer>>;

// One layer or channel, or an entry of `pending`. A layer takes in what is pending.
void AddWholeElement(psdbuilder::PSDBuilder& builder, const Frame& frame,
                     const PSDOutputLayer& layer, const ElementPixels& pixels,
                     PendingLayers& pending);

// Up to three layers or channels: one of red, one of green, one of blue.
void AddSplitElement(psdbuilder::PSDBuilder& builder, const Frame& frame,
                     const PSDOutputLayer& layer, const ElementPixels& pixels);

}  // namespace effect
