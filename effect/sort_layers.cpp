#include "effect/sort_layers.h"

#include <renderelements.h>

#include <tuple>
#include <unordered_map>

#include "effect/element_classes.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

struct Place {
    bool isChannel;
    int rank;
    int before;

    auto Key() const { return std::tie(isChannel, rank, before); }
};

// What the list was before it is sorted: the host's comparison is told of two entries and no more.
std::unordered_map<const ReferenceTarget*, Place> places;

Place PlaceOf(const PSDOutput& effect, int list, int index) {
    const PSDOutputLayer* layer = effect.Layer(list, index);
    IRenderElement* element = layer ? layer->Element() : nullptr;
    return {layer && layer->pblock->GetInt("outputAs"_layerParam) == 1,
            element ? ElementRank(element->ClassID()) : -1, index};
}

const Place& PlaceOf(const void* entry) {
    return places.find(*static_cast<ReferenceTarget* const*>(entry))->second;
}

int Compare(const void* left, const void* right) {
    const Place& one = PlaceOf(left);
    const Place& other = PlaceOf(right);
    if (one.Key() < other.Key()) return -1;
    return other.Key() < one.Key() ? 1 : 0;
}

}  // namespace

void SortLayers(PSDOutput& effect, int list) {
    const int count = effect.LayerCount(list);
    if (count < 2) return;
    const ParamID table = PSDOutput::LayerList(list);
    std::unordered_map<const ReferenceTarget*, Place> before;
    for (int i = 0; i < count; ++i)
        before.emplace(effect.pblock->GetReferenceTarget(table, 0, i), PlaceOf(effect, list, i));
    // Whoever is told of the sort may have another list sorted.
    places.swap(before);
    effect.pblock->Sort(table, Compare);
    places.swap(before);
}

}  // namespace effect
