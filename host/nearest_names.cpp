#include "host/nearest_names.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "host/ascii_case.h"

namespace host {

std::size_t EditDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const bool same = AsciiLower(left[i]) == AsciiLower(right[j]);
            const std::size_t replaced = diagonal + (same ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::vector<std::string> NearestNames(std::string_view wanted, std::vector<std::string> names,
                                      std::size_t count) {
    struct Ranked {
        // 1 for a name that contains what is wanted.
        std::size_t rank;
        std::size_t distance;
        std::string name;
    };
    const std::string lower = AsciiLower(wanted);
    std::vector<Ranked> ranked;
    ranked.reserve(names.size());
    for (std::string& name : names) {
        const std::size_t distance = EditDistance(wanted, name);
        const bool contains = lower.size() > 1 && AsciiLower(name).find(lower) != std::string::npos;
        ranked.push_back({contains ? 1 : distance, distance, std::move(name)});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& left, const Ranked& right) {
        return std::tie(left.rank, left.distance) < std::tie(right.rank, right.distance);
    });
    std::vector<std::string> nearest;
    for (Ranked& each : ranked) {
        const bool isNear = each.rank <= wanted.size() / 2 + 1;
        if (nearest.size() == count || (!isNear && !nearest.empty())) break;
        nearest.push_back(std::move(each.name));
    }
    return nearest;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty()) text += ", ";
        text += name;
    }
    return text;
}

}  // namespace host
