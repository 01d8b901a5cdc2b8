#include "command/coverage_entries.h"

#include "command/coverage_tally.h"
#include "command/row_requests.h"
#include "command/row_values.h"

namespace command {

std::vector<ManifestEntry> EntriesByCoverage(RenderFile& file, std::size_t framePart,
                                             const Cryptomatte& matte) {
    CoverageTally tally;
    RowRequests requests;
    struct Places {
        std::size_t id;
        std::size_t coverage;
    };
    std::vector<Places> ranks;
    for (const CryptomatteRank& rank : matte.ranks)
        ranks.push_back({requests.Add(rank.id), requests.Add(rank.coverage)});
    RowValues values;
    const auto width =
        static_cast<std::size_t>(file.GetDescription().parts[framePart].displayWindow.Width());
    file.ReadRows(framePart, requests.Channels(), [&](int /*y*/, std::span<const ChannelRow> rows) {
        for (const Places& rank : ranks) {
            tally.AddRow({RowValues::AsBits(rows[rank.id], width),
                          values.AsFloats(rows[rank.coverage], width)});
        }
    });
    std::vector<ManifestEntry> entries;
    for (const CoverageTally::Entry& seen : tally.Largest())
        entries.push_back({matte.manifest.NameOf(seen.id), seen.id});
    return entries;
}

}  // namespace command
