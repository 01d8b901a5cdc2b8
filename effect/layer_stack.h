// The order of the document's groups, from the top of the layer stack down.
#pragma once

#include <iparamb2_types.h>

#include <optional>
#include <span>

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// One kind of output. Rows of equal position come in the order in which they stand.
struct StackRow {
    ParamID position;
    // Empty for output that has no switch of its own.
    std::optional<ParamID> enabling;
    void (*build)(psdbuilder::PSDBuilder& builder, const Frame& frame);
    // Brings the effect's lists in step with the scene when the row's turn comes, whether the row
    // is on or not. May be null.
    void (*prepare)(const Frame& frame) = nullptr;
};

// All kinds of output that there are.
std::span<const StackRow> StackRows();

// A stored position counts as 2000 above that, and as 0 below 1.
constexpr int ClampPosition(int stored) {
    if (stored > 2000) return 2000;
    return stored < 1 ? 0 : stored;
}

// Prepares each row and builds it if it is enabled, low positions first.
void RunLayerStack(psdbuilder::PSDBuilder& builder, const Frame& frame,
                   std::span<const StackRow> rows = StackRows());

}  // namespace effect
