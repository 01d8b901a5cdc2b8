#include "effect/layer_stack.h"

#include <iparamb2.h>

#include <algorithm>
#include <vector>

#include "effect/render_output_layer.h"
#include "plugin/parameters.h"

namespace effect {

std::span<const StackRow> StackRows() {
    static constexpr StackRow rows[] = {
        {"renderOrder"_param, "createRenderOutputLayer"_param, AddRenderOutputLayer},
    };
    return rows;
}

void RunLayerStack(psdbuilder::PSDBuilder& builder, const Frame& frame,
                   std::span<const StackRow> rows) {
    struct Placed {
        int position;
        const StackRow* row;
    };
    std::vector<Placed> stack;
    for (const StackRow& row : rows) {
        stack.push_back({ClampPosition(frame.pblock.GetInt(row.position)), &row});
    }
    std::stable_sort(stack.begin(), stack.end(), [](const Placed& left, const Placed& right) {
        return left.position < right.position;
    });
    for (const Placed& placed : stack) {
        if (frame.pblock.GetInt(placed.row->enabling)) placed.row->build(builder, frame);
    }
}

}  // namespace effect
