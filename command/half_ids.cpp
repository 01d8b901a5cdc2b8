#include "command/half_ids.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "command/cryptomatte_id.h"
#include "command/row_values.h"

namespace command {
namespace {

// Ends the reading.
struct SoundIDFound {};

bool WentThroughHalfs(RenderFile& file, std::size_t framePart, const Cryptomatte& matte) {
    std::vector<ChannelRef> ids;
    for (const CryptomatteRank& rank : matte.ranks)
        ids.push_back(rank.id);
    bool any = false;
    const auto width =
        static_cast<std::size_t>(file.GetDescription().parts[framePart].displayWindow.Width());
    try {
        file.ReadRows(framePart, ids, [&](int /*y*/, std::span<const ChannelRow> rows) {
            for (const ChannelRow& row : rows) {
                for (const std::uint32_t id : RowValues::AsBits(row, width)) {
                    if (id == 0) continue;
                    any = true;
                    if (!FitsHalf(id)) throw SoundIDFound();
                }
            }
        });
    } catch (const SoundIDFound&) {
        return false;
    }
    return any;
}

}  // namespace

void DropHalfIDs(RenderFile& file, PassPlan& plan) {
    const std::size_t framePart = file.GetDescription().layers[plan.beauty.layer].part;
    for (std::optional<std::size_t>* matte : {&plan.objectMatte, &plan.materialMatte}) {
        if (!*matte || !WentThroughHalfs(file, framePart, plan.cryptomattes[**matte])) continue;
        plan.warnings.push_back("the ids of Cryptomatte \"" + plan.cryptomattes[**matte].name +
                                "\" went through half floats, which destroys them: no matte can "
                                "be made; render it with 32-bit floats");
        plan.cryptomattes[**matte].ranks.clear();
        matte->reset();
    }
}

}  // namespace command
