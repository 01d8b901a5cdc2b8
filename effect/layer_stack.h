// The order of the document's groups, from the top of the layer stack down.
#pragma once

#include <iparamb2_types.h>

#include <span>

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// One kind of output. Rows of equal position come in the order in which they stand.
struct StackRow {
    ParamID position;
    ParamID enabling;
    void (*build)(psdbuilder::PSDBuilder& builder, const Frame& frame);
};

// All kinds of output that there are.
std::span<const StackRow> StackRows();

// A stored position counts as 2000 above that, and as 0 below 1.
constexpr int ClampPosition(int stored) {
    if (stored > 2000) return 2000;
    return stored < 1 ? 0 : stored;
}

// Builds each row that is enabled, low positions first.
void RunLayerStack(psdbuilder::PSDBuilder& builder, const Frame& frame,
                   std::span<const StackRow> rows = StackRows());

}  // namespace effect
