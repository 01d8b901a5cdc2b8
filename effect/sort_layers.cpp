#include "effect/sort_layers.h"

#include <renderelements.h>

#include <algorithm>
#include <tuple>
#include <vector>

#include "effect/element_classes.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

struct Place {
    const ReferenceTarget* entry;
    bool isChannel;
    int rank;
    int before;

    auto Key() const { return std::tie(isChannel, rank, before); }
};

// What the list was before it is sorted: the host's comparison is told of two entries and no more.
std::vector<Place> places;

Place PlaceOf(const PSDOutput& effect, int list, int index) {
    const ReferenceTarget* entry =
        effect.pblock->GetReferenceTarget(PSDOutput::LayerList(list), 0, index);
    const PSDOutputLayer* layer = effect.Layer(list, index);
    IRenderElement* element = layer ? layer->Element() : nullptr;
    return {entry, layer && layer->pblock->GetInt("outputAs"_layerParam) == 1,
            element ? ElementRank(element->ClassID()) : -1, index};
}

const Place& PlaceOf(const void* entry) {
    const ReferenceTarget* target = *static_cast<ReferenceTarget* const*>(entry);
    return *std::find_if(places.begin(), places.end(),
                         [target](const Place& place) { return place.entry == target; });
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
    std::vector<Place> before;
    before.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        before.push_back(PlaceOf(effect, list, i));
    // Whoever is told of the sort may have another list sorted.
    places.swap(before);
    effect.pblock->Sort(PSDOutput::LayerList(list), Compare);
    places.swap(before);
}

}  // namespace effect
