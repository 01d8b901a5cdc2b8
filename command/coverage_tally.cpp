#include "command/coverage_tally.h"

#include <algorithm>
#include <tuple>

namespace command {

void CoverageTally::AddRow(const RankRow& row) {
    // Runs of one id are added once.
    std::uint32_t id = 0;
    double run = 0.0;
    for (std::size_t x = 0; x < row.ids.size(); ++x) {
        const float coverage = row.coverages[x];
        if (row.ids[x] == 0 || !(coverage > 0.0F)) continue;
        if (row.ids[x] != id) {
            if (id != 0) coverageOf[id] += run;
            id = row.ids[x];
            run = 0.0;
        }
        run += std::min(double{coverage}, 1.0);
    }
    if (id != 0) coverageOf[id] += run;
}

void CoverageTally::Add(std::uint32_t id, float coverage) {
    if (id == 0 || !(coverage > 0.0F)) return;
    coverageOf[id] += std::min(double{coverage}, 1.0);
}

std::vector<CoverageTally::Entry> CoverageTally::Largest(std::size_t count) const {
    std::vector<Entry> entries;
    entries.reserve(coverageOf.size());
    for (const auto& [id, coverage] : coverageOf)
        entries.push_back({id, coverage});
    std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return std::tuple(-left.coverage, left.id) < std::tuple(-right.coverage, right.id);
    });
    if (entries.size() > count) entries.resize(count);
    return entries;
}

}  // namespace command
