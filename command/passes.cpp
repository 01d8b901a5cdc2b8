#include "command/passes.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "command/ascii_case.h"
#include "command/deep_channels.h"
#include "command/failure.h"
#include "command/layer_names.h"
#include "command/layer_places.h"
#include "command/printable.h"
#include "command/raw_groups.h"

namespace command {
namespace {

enum class Slot : std::uint8_t { Red, Green, Blue, Alpha, W };

// A layer's channels by what they are.
struct Assigned {
    std::array<std::optional<std::size_t>, 5> slots{};
    // X Y Z or U V instead of colours.
    bool isVector = false;
    bool isSingle = false;
    // Channels with other names, or of a component that is there already.
    std::vector<std::size_t> rest{};

    std::optional<std::size_t>& operator[](Slot slot) {
        return slots[static_cast<std::size_t>(slot)];
    }
    const std::optional<std::size_t>& operator[](Slot slot) const {
        return slots[static_cast<std::size_t>(slot)];
    }
};

std::optional<Slot> ColorSlot(std::string_view suffix) {
    struct SlotOf {
        Component component;
        Slot slot;
    };
    constexpr SlotOf slots[] = {{Component::Red, Slot::Red},
                                {Component::Green, Slot::Green},
                                {Component::Blue, Slot::Blue},
                                {Component::Alpha, Slot::Alpha}};
    const std::optional<Component> component = ColorComponent(suffix);
    for (const SlotOf& each : slots) {
        if (component == each.component) return each.slot;
    }
    return std::nullopt;
}

std::optional<Slot> VectorSlot(std::string_view suffix) {
    constexpr std::array slots = {Slot::Red, Slot::Green, Slot::Blue, Slot::W};
    if (const std::optional<std::size_t> axis = AxisOf(suffix)) return slots[*axis];
    return ColorSlot(suffix) == Slot::Alpha ? std::optional(Slot::Alpha) : std::nullopt;
}

Assigned Assign(const Layer& layer) {
    Assigned assigned;
    if (layer.channels.size() == 1) {
        assigned.isSingle = true;
        assigned[Slot::Red] = 0;
        return assigned;
    }
    assigned.isVector =
        std::none_of(layer.channels.begin(), layer.channels.end(),
                     [](const Channel& channel) {
                         const auto slot = ColorSlot(channel.suffix);
                         return slot && *slot != Slot::Alpha;
                     }) &&
        std::count_if(layer.channels.begin(), layer.channels.end(), [](const Channel& channel) {
            return AxisOf(channel.suffix).has_value();
        }) > 1;
    for (std::size_t i = 0; i < layer.channels.size(); ++i) {
        const std::string& suffix = layer.channels[i].suffix;
        const std::optional<Slot> slot = assigned.isVector ? VectorSlot(suffix) : ColorSlot(suffix);
        if (slot && !assigned[*slot]) {
            assigned[*slot] = i;
        } else {
            assigned.rest.push_back(i);
        }
    }
    return assigned;
}

bool IsUnsigned(SampleType type) {
    return type != SampleType::Half && type != SampleType::Float;
}

bool IsThinned(const Layer& layer) {
    return std::any_of(layer.channels.begin(), layer.channels.end(), [](const Channel& channel) {
        return channel.xSampling != 1 || channel.ySampling != 1;
    });
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

class Planner {
  public:
    Planner(const Description& description, const Beauty& beauty, const PassOptions& passOptions)
        : file(description), options(passOptions), places(description) {
        plan.renderer = RendererOf(file);
        plan.beauty = beauty;
        plan.beautyPlace = places.All()[beauty.layer];
        plan.becomes.resize(file.layers.size());
    }

    PassPlan Plan() {
        PlanCryptomattes();
        for (std::size_t i = 0; i < file.layers.size(); ++i)
            PlanLayer(i);
        if (file.parts[file.layers[plan.beauty.layer].part].deep) PlanDeep();
        if (plan.depth && !plan.depth->isDistance) {
            plan.warnings.push_back("depth " + Quoted(file.layers[plan.depth->channel.layer].name) +
                                    " was mapped to a range by the renderer; it is no distance");
        }
        return std::move(plan);
    }

  private:
    bool IsOwnView(const LayerPlace& place) const {
        return place.viewLayer == plan.beautyPlace.viewLayer && place.view == plan.beautyPlace.view;
    }

    void PlanCryptomattes() {
        Cryptomattes found = FindCryptomattes(file, places);
        plan.cryptomattes = std::move(found.all);
        plan.warnings = std::move(found.warnings);
        for (std::size_t i = 0; i < plan.cryptomattes.size(); ++i) {
            const Cryptomatte& matte = plan.cryptomattes[i];
            std::string& kind = matteWords.emplace_back(NameOf(matte.kind));
            if (matte.kind == CryptomatteKind::Other) kind = Quoted(matte.name);
            for (const std::size_t layer : matte.layers) {
                plan.becomes[layer] =
                    matte.ranks.empty() ? "nothing: no mattes can come of it" : MatteText(i);
            }
            if (matte.preview) plan.becomes[*matte.preview] = "nothing: a picture of its mattes";
            if (matte.ranks.empty() || !IsOwnView(matte.place)) continue;
            if (matte.kind == CryptomatteKind::Object && !plan.objectMatte) plan.objectMatte = i;
            if (matte.kind == CryptomatteKind::Material && !plan.materialMatte) {
                plan.materialMatte = i;
            }
        }
    }

    std::string MatteText(std::size_t index) const {
        const Cryptomatte& matte = plan.cryptomattes[index];
        const std::string mattes = "mattes of Cryptomatte, " + matteWords[index];
        const bool used = IsOwnView(matte.place) && (matte.kind == CryptomatteKind::Object ||
                                                     matte.kind == CryptomatteKind::Material);
        return used ? mattes
                    : "nothing: " + mattes + (IsOwnView(matte.place) ? "" : ", of another view");
    }

    void PlanLayer(std::size_t index) {
        std::string& becomes = plan.becomes[index];
        if (!becomes.empty() && index != plan.beauty.layer) return;
        const Layer& layer = file.layers[index];
        const LayerPlace& place = places.All()[index];
        if (index == plan.beauty.layer) {
            becomes = "the picture";
            PlanRest(index, RestOfPicture());
        } else if (IsCryptomatteName(place.pass)) {
            becomes = "nothing: a picture of mattes that aren't in the file";
        } else if (file.parts[layer.part].deep) {
            const bool own = layer.part == file.layers[plan.beauty.layer].part;
            becomes = own ? "part of the deep picture" : "nothing: it is deep";
        } else if (IsThinned(layer)) {
            becomes = "nothing: it has fewer samples than pixels";
            plan.warnings.push_back("layer " + Quoted(layer.name) +
                                    " has fewer samples than pixels and is left out");
        } else if (!IsOwnView(place) && !options.otherViews) {
            becomes = "nothing: it is of another view";
        } else {
            PlanElements(index);
        }
    }

    PassMeaning MeaningOf(std::size_t index, const Assigned& assigned) {
        const Layer& layer = file.layers[index];
        const std::string& pass = places.All()[index].pass;
        if (pass.empty()) return {PassKind::OtherColor, BEAUTY_ELEMENT};
        if (const std::optional<PassMeaning> known = FindPass(plan.renderer, pass)) return *known;
        // Files of halfs keep what is no colour in floats.
        const Layer& picture = file.layers[plan.beauty.layer];
        const bool isWider = layer.channels.front().type != SampleType::Half &&
                             picture.channels.front().type == SampleType::Half;
        const bool isData = assigned.isVector || assigned.isSingle || isWider ||
                            !assigned[Slot::Red] || IsUnsigned(layer.channels.front().type);
        const PassKind kind = isData ? PassKind::OtherData : PassKind::OtherColor;
        plan.unknown.push_back("layer " + Quoted(layer.name) +
                               " is of no known kind; it counts as " + std::string(NameOf(kind)));
        return {kind, PassClassID(kind)};
    }

    void PlanElements(std::size_t index) {
        const Layer& layer = file.layers[index];
        const Assigned assigned = Assign(layer);
        const PassMeaning meaning = MeaningOf(index, assigned);
        const auto ref = [&](Slot slot) -> std::optional<ChannelRef> {
            return assigned[slot] ? std::optional(ChannelRef{index, *assigned[slot]})
                                  : std::nullopt;
        };
        WarnOfMissing(layer, assigned);
        PassChannels channels{ref(Slot::Red), ref(Slot::Green), ref(Slot::Blue), ref(Slot::Alpha)};
        std::string& becomes = plan.becomes[index];
        const std::string name = ElementName(places.All()[index]);
        // The motion to the next frame and from the last: two vectors of two values.
        const bool twoVectors = assigned.isVector && assigned[Slot::W] && channels.red &&
                                channels.green && channels.blue;
        if (twoVectors) {
            becomes = AddElement(index, meaning, name,
                                 {channels.red, channels.green, {}, channels.alpha});
            becomes += " and " + AddElement(index, meaning, name + " ZW",
                                            {channels.blue, ref(Slot::W), {}, {}});
        } else if (channels.red || channels.green || channels.blue || channels.alpha) {
            if (assigned[Slot::W]) channels.alpha = ref(Slot::W);
            becomes = AddElement(index, meaning, name, Closed(channels));
        }
        PlanRest(index, assigned);
        if (IsOwnView(places.All()[index])) becomes += PlanFragments(index, assigned, meaning);
    }

    // Without a gap before a component that is there: alpha alone is one value.
    static PassChannels Closed(PassChannels channels) {
        if (!channels.red && !channels.green && !channels.blue) return {channels.alpha};
        return channels;
    }

    // Every other channel is an element of one value.
    void PlanRest(std::size_t index, const Assigned& assigned) {
        const Layer& layer = file.layers[index];
        const LayerPlace& place = places.All()[index];
        std::string& becomes = plan.becomes[index];
        for (const std::size_t channel : assigned.rest) {
            const std::string& suffix = layer.channels[channel].suffix;
            const PassMeaning meaning =
                FindPass(plan.renderer, suffix)
                    .value_or(PassMeaning{PassKind::OtherData, PassClassID(PassKind::OtherData)});
            becomes += (becomes.empty() ? "" : " and ") +
                       AddElement(index, meaning, ElementName(place) + " " + suffix,
                                  {ChannelRef{index, channel}, {}, {}, {}});
            Assigned single;
            single.isSingle = true;
            single[Slot::Red] = channel;
            if (IsOwnView(place)) becomes += PlanFragments(index, single, meaning);
        }
    }

    // What the picture doesn't use of its layer.
    Assigned RestOfPicture() const {
        Assigned assigned;
        const Beauty& beauty = plan.beauty;
        const Layer& layer = file.layers[beauty.layer];
        if (beauty.lumaChroma || file.parts[layer.part].deep || IsThinned(layer)) return assigned;
        for (std::size_t i = 0; i < layer.channels.size(); ++i) {
            const std::string& name = layer.channels[i].name;
            const bool used = name == beauty.red || name == beauty.green || name == beauty.blue ||
                              name == beauty.alpha;
            if (!used) assigned.rest.push_back(i);
        }
        return assigned;
    }

    void WarnOfMissing(const Layer& layer, const Assigned& assigned) {
        constexpr std::string_view colors[] = {"red", "green", "blue"};
        constexpr std::string_view axes[] = {"X", "Y", "Z"};
        std::string missing;
        bool any = false;
        // A vector may end before Z.
        for (std::size_t i = 0; i < (assigned.isVector && !assigned.slots[2] ? 2 : 3); ++i) {
            any = any || assigned.slots[i];
            if (assigned.slots[i]) continue;
            missing += (missing.empty() ? "" : " and ");
            missing += assigned.isVector ? axes[i] : colors[i];
        }
        if (assigned.isSingle || !any || missing.empty()) return;
        plan.warnings.push_back("layer " + Quoted(layer.name) + " has no channel for " + missing +
                                "; 0 stands there");
    }

    std::string ElementName(const LayerPlace& place) const {
        std::string name;
        const auto append = [&](const std::string& part) {
            if (!part.empty()) name += (name.empty() ? "" : "/") + part;
        };
        if (place.viewLayer != plan.beautyPlace.viewLayer) append(place.viewLayer);
        if (place.view != plan.beautyPlace.view) append(place.view);
        append(place.pass);
        return Printable(name);
    }

    std::string Unique(const std::string& wanted) {
        // The last number is kept, so that many equal names don't cost their square.
        int& number = lastNumbers.try_emplace(wanted, 1).first->second;
        std::string name = wanted;
        while (!names.insert(name).second)
            name = wanted + " (" + std::to_string(++number) + ")";
        return name;
    }

    // The words for it.
    std::string AddElement(std::size_t layer, const PassMeaning& meaning, std::string name,
                           const PassChannels& channels) {
        if (name.empty()) name = "Element";
        name = Unique(name);
        plan.elements.push_back({name, meaning.classID, meaning.kind, layer, channels,
                                 IsData(meaning.kind), !IsOwnView(places.All()[layer])});
        const bool isPicture = meaning.classID == BEAUTY_ELEMENT;
        return "render element " + Quoted(name) + " (" +
               (isPicture ? "picture" : std::string(NameOf(meaning.kind))) + ")";
    }

    // What fragments take of a layer; the words for it.
    std::string PlanFragments(std::size_t index, const Assigned& assigned,
                              const PassMeaning& meaning) {
        const Layer& layer = file.layers[index];
        // The same number may stand in all colours. A colour for each id is no id: those are halfs,
        // and what isn't whole counts as none.
        const bool isNumber =
            assigned[Slot::Red] &&
            (assigned.isSingle || layer.channels[*assigned[Slot::Red]].type != SampleType::Half);
        if (meaning.kind == PassKind::ObjectID && isNumber) {
            return PlanIDs(plan.objectID, {index, *assigned[Slot::Red]},
                           ", and the object IDs of the mattes");
        }
        if (meaning.kind == PassKind::MaterialID && isNumber) {
            return PlanIDs(plan.materialID, {index, *assigned[Slot::Red]},
                           ", and the material IDs of the mattes");
        }
        if (meaning.kind == PassKind::Depth && assigned[Slot::Red]) {
            const bool isDistance = meaning.detail != PassDetail::MappedDepth;
            if (plan.depth && (plan.depth->isDistance || !isDistance)) return {};
            plan.depth = DepthPass{{index, *assigned[Slot::Red]}, isDistance};
            return isDistance ? ", and the depth of the mattes" : "";
        }
        if (meaning.kind == PassKind::Normal && !plan.normals && assigned[Slot::Red] &&
            assigned[Slot::Green] && assigned[Slot::Blue]) {
            plan.normals = NormalPass{{index, *assigned[Slot::Red]},
                                      {index, *assigned[Slot::Green]},
                                      {index, *assigned[Slot::Blue]},
                                      meaning.detail};
            return ", and the normals of the mattes";
        }
        return {};
    }

    // Integers go before floats.
    std::string PlanIDs(std::optional<IDPass>& ids, const ChannelRef& channel, const char* words) {
        const auto isUnsigned = [&](const ChannelRef& ref) {
            return IsUnsigned(file.layers[ref.layer].channels[ref.channel].type);
        };
        if (ids && (isUnsigned(ids->channel) || !isUnsigned(channel))) return {};
        ids = IDPass{channel};
        return words;
    }

    // The deep part of the picture, with the ids that stand in it.
    void PlanDeep() {
        plan.objectMatte.reset();
        plan.materialMatte.reset();
        plan.objectID.reset();
        plan.materialID.reset();
        plan.depth.reset();
        plan.normals.reset();
        DeepPass deep;
        try {
            deep.channels = ChooseDeepChannels(file, plan.beauty);
        } catch (const InputError& fault) {
            plan.warnings.emplace_back(fault.what() + file.path.size() + 2);
            return;
        }
        // Ids whose meaning isn't known are of no use to fragments.
        deep.channels.ids.clear();
        for (std::size_t i = 0; i < file.layers.size(); ++i) {
            const Layer& layer = file.layers[i];
            if (layer.part != deep.channels.part || layer.channels.size() != 1) continue;
            const std::optional<PassMeaning> meaning =
                FindPass(plan.renderer, places.All()[i].pass);
            if (!meaning) continue;
            AddDeepID(deep, deep.objectID, meaning->kind == PassKind::ObjectID, layer);
            AddDeepID(deep, deep.materialID, meaning->kind == PassKind::MaterialID, layer);
        }
        plan.deep = std::move(deep);
    }

    static void AddDeepID(DeepPass& deep, std::optional<std::size_t>& id, bool isIt,
                          const Layer& layer) {
        if (!isIt || id) return;
        id = deep.channels.ids.size();
        deep.channels.ids.push_back(layer.channels.front().name);
    }

    const Description& file;
    PassOptions options;
    LayerPlaces places;
    PassPlan plan;
    std::vector<std::string> matteWords;
    std::set<std::string> names;
    std::map<std::string, int> lastNumbers;
};

}  // namespace

PassPlan PlanPasses(const Description& file, const Beauty& beauty, const PassOptions& options) {
    PassPlan plan = Planner(file, beauty, options).Plan();
    MendRawGroups(plan);
    return plan;
}

}  // namespace command
