#include "command/cryptomatte.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>
#include <variant>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/layer_names.h"
#include "command/pass_names.h"
#include "command/sidecar_file.h"

namespace command {
namespace {

// What a part's attributes say of one Cryptomatte.
struct Metadata {
    std::size_t part = 0;
    std::string key{};
    // By the last component of the attribute's name.
    std::map<std::string, std::string, std::less<>> fields{};
    bool used = false;

    [[nodiscard]] std::string Field(std::string_view name) const {
        const auto found = fields.find(name);
        return found == fields.end() ? std::string() : found->second;
    }
};

// Layers with one name but for their number.
struct Group {
    std::string name;
    LayerPlace place;
    // By number.
    std::map<int, std::size_t> layers;
};

// "cryptomatte/KEY/FIELD", perhaps with "exr/" in front.
std::optional<std::pair<std::string_view, std::string_view>> SplitAttributeName(
    std::string_view name) {
    for (const std::string_view start : {"exr/", "cryptomatte/"}) {
        if (name.starts_with(start)) {
            name.remove_prefix(start.size());
        } else if (start != "exr/") {
            return std::nullopt;
        }
    }
    const std::size_t slash = name.rfind('/');
    if (slash == std::string_view::npos) return std::nullopt;
    return std::pair(name.substr(0, slash), name.substr(slash + 1));
}

std::vector<Metadata> ReadMetadata(const Description& file) {
    std::vector<Metadata> all;
    for (std::size_t part = 0; part < file.parts.size(); ++part) {
        std::map<std::string, std::size_t, std::less<>> found;
        for (const Attribute& attribute : file.parts[part].attributes) {
            const auto name = SplitAttributeName(attribute.name);
            const auto* text = std::get_if<std::string>(&attribute.value);
            if (!name || !text) continue;
            const auto [at, isNew] = found.try_emplace(std::string(name->first), all.size());
            if (isNew) all.push_back({part, at->first});
            all[at->second].fields[std::string(name->second)] = *text;
        }
    }
    return all;
}

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// The number of "CryptoObject01", which two digits give.
std::optional<int> RankNumber(std::string_view name) {
    if (name.size() < 3) return std::nullopt;
    const char tens = name[name.size() - 2];
    const char ones = name[name.size() - 1];
    if (!IsDigit(tens) || !IsDigit(ones)) return std::nullopt;
    return (tens - '0') * 10 + (ones - '0');
}

std::string FullName(const LayerPlace& place) {
    return place.viewLayer.empty() ? place.pass : place.viewLayer + "." + place.pass;
}

// All layers whose names end in a number; most are no Cryptomattes.
std::vector<Group> ReadGroups(const LayerPlaces& places) {
    std::vector<Group> groups;
    std::map<std::pair<std::string, std::string>, std::size_t> found;
    for (std::size_t i = 0; i < places.All().size(); ++i) {
        LayerPlace place = places.All()[i];
        const std::optional<int> number = RankNumber(place.pass);
        if (!number) continue;
        place.pass.resize(place.pass.size() - 2);
        const std::string name = FullName(place);
        const auto [at, isNew] = found.try_emplace({name, place.view}, groups.size());
        if (isNew) groups.push_back({name, place, {}});
        groups[at->second].layers.try_emplace(*number, i);
    }
    return groups;
}

// How well metadata of this name fits a group; 0: not at all.
int FitOf(const Metadata& metadata, const Group& group, const Description& file) {
    const std::string name = metadata.Field("name");
    if (name.empty()) return 0;
    const auto isTail = [&](bool ignoringCase) {
        if (name.size() + 1 > group.name.size()) return false;
        const std::size_t start = group.name.size() - name.size();
        const std::string_view tail = std::string_view(group.name).substr(start);
        return group.name[start - 1] == '.' &&
               (ignoringCase ? EqualIgnoringCase(tail, name) : tail == name);
    };
    int fit = 0;
    if (group.name == name) {
        fit = 4;
    } else if (isTail(false)) {
        fit = 3;
    } else if (EqualIgnoringCase(group.name, name)) {
        fit = 2;
    } else if (isTail(true)) {
        fit = 1;
    }
    if (fit == 0) return 0;
    // Of equally good ones, that of the layers' own part, and one that has a manifest.
    const bool sameRoom = file.layers[group.layers.begin()->second].part == metadata.part;
    const bool hasManifest =
        !metadata.Field("manifest").empty() || !metadata.Field("manif_file").empty();
    return fit * 4 + (hasManifest ? 2 : 0) + (sameRoom ? 1 : 0);
}

Metadata* FindMetadata(std::vector<Metadata>& all, const Group& group, const Description& file) {
    Metadata* best = nullptr;
    int bestFit = 0;
    for (Metadata& each : all) {
        const int fit = FitOf(each, group, file);
        if (fit == 0) continue;
        // Parts repeat what others say: all that fit belong to channels.
        each.used = true;
        if (fit > bestFit) {
            best = &each;
            bestFit = fit;
        }
    }
    return best;
}

// Letters and digits in lower case.
std::string PlainLetters(std::string_view text) {
    std::string letters;
    for (const char letter : AsciiLower(text)) {
        if (IsDigit(letter) || (letter >= 'a' && letter <= 'z')) letters += letter;
    }
    return letters;
}

CryptomatteKind KindOf(std::string_view pass) {
    struct KindWord {
        std::string_view word;
        CryptomatteKind kind;
    };
    constexpr KindWord words[] = {
        {"material", CryptomatteKind::Material}, {"mtl", CryptomatteKind::Material},
        {"shader", CryptomatteKind::Material},   {"asset", CryptomatteKind::Asset},
        {"object", CryptomatteKind::Object},     {"node", CryptomatteKind::Object},
        {"obj", CryptomatteKind::Object},        {"instance", CryptomatteKind::Object},
    };
    std::string letters = PlainLetters(pass);
    for (const KindWord& each : words) {
        if (letters.find(each.word) != std::string::npos) return each.kind;
    }
    // Renderers with one element for all kinds call it so until the user renames it, and set it to
    // the nodes.
    while (!letters.empty() && IsDigit(letters.back()))
        letters.pop_back();
    return letters.ends_with("cryptomatte") || letters == "crypto" ? CryptomatteKind::Object
                                                                   : CryptomatteKind::Other;
}

// 0 to 3 in the order id, coverage, id, coverage.
std::optional<std::size_t> PlaceInLayer(std::string_view suffix) {
    if (EqualIgnoringCase(suffix, "y")) return 1;
    switch (ColorComponent(suffix).value_or(Component::Luminance)) {
        case Component::Red:
            return 0;
        case Component::Green:
            return 1;
        case Component::Blue:
            return 2;
        case Component::Alpha:
            return 3;
        default:
            break;
    }
    const std::optional<std::size_t> axis = AxisOf(suffix);
    return axis && !EqualIgnoringCase(suffix, "u") && !EqualIgnoringCase(suffix, "v")
               ? axis
               : std::optional<std::size_t>();
}

const Channel& ChannelOf(const Description& file, const ChannelRef& ref) {
    return file.layers[ref.layer].channels[ref.channel];
}

// Builds one Cryptomatte and collects what is to be said of it.
class Reader {
  public:
    Reader(const Description& description, const Group& layers, const Metadata* said)
        : file(description), group(layers), metadata(said) {
        result.kind = KindOf(group.place.pass);
        result.name = group.name;
        result.place = group.place;
    }

    Cryptomatte Read() {
        for (const auto& [number, layer] : group.layers) {
            result.layers.push_back(layer);
            ReadRanks(layer);
        }
        CheckNumbers();
        DropUnusable();
        if (result.ranks.empty()) return std::move(result);
        CheckCompression();
        ReadNames();
        return std::move(result);
    }

    std::vector<std::string> TakeWarnings() { return std::move(warnings); }

  private:
    void Warn(const std::string& what) {
        warnings.push_back("Cryptomatte \"" + ShownName() + "\": " + what);
    }
    [[nodiscard]] std::string ShownName() const {
        return group.place.view.empty() ? group.name : group.name + "." + group.place.view;
    }

    void ReadRanks(std::size_t layer) {
        std::array<std::optional<std::size_t>, 4> channels{};
        for (std::size_t i = 0; i < file.layers[layer].channels.size(); ++i) {
            const auto place = PlaceInLayer(file.layers[layer].channels[i].suffix);
            if (place && !channels[*place]) channels[*place] = i;
        }
        for (std::size_t i = 0; i < channels.size(); i += 2) {
            if (channels[i] && channels[i + 1]) {
                result.ranks.push_back({{layer, *channels[i]}, {layer, *channels[i + 1]}});
            } else if (channels[i] || channels[i + 1]) {
                Warn("layer \"" + file.layers[layer].name + "\" has " +
                     (channels[i] ? "an id without its coverage" : "a coverage without its id") +
                     "; this rank is left out");
            }
        }
    }

    void CheckNumbers() {
        const int last = group.layers.rbegin()->first;
        const auto missing = static_cast<std::size_t>(last) + 1 - group.layers.size();
        if (missing == 0) return;
        Warn(std::to_string(missing) + (missing == 1 ? " layer" : " layers") + " before number " +
             std::to_string(last) + (missing == 1 ? " is" : " are") +
             " missing; the mattes lack what is in " + (missing == 1 ? "it" : "them"));
    }

    // The whole of it where ids can't be read as they were written.
    void DropUnusable() {
        const char* reason = nullptr;
        for (const CryptomatteRank& rank : result.ranks) {
            const Channel& id = ChannelOf(file, rank.id);
            const Channel& coverage = ChannelOf(file, rank.coverage);
            const auto isThinned = [](const Channel& channel) {
                return channel.xSampling != 1 || channel.ySampling != 1;
            };
            if (file.parts[file.layers[rank.id.layer].part].deep) {
                reason = "its samples are deep, which can't be read; render it flat";
            } else if (id.type == SampleType::Half) {
                reason = "its ids are half floats, which destroys them; render it as 32-bit floats";
            } else if (id.type != SampleType::Float && id.type != SampleType::Unsigned32) {
                reason = "its ids have less than 32 bits; render it as 32-bit floats";
            } else if (isThinned(id) || isThinned(coverage)) {
                reason = "it has fewer samples than pixels";
            }
        }
        if (!reason) {
            if (result.ranks.empty()) Warn("its layers have no ids; no mattes come of it");
            return;
        }
        result.ranks.clear();
        Warn(std::string(reason) + "; no mattes come of it");
    }

    void CheckCompression() {
        // What these compressions call colour by the channel's name loses bits.
        constexpr std::string_view colors[] = {"R", "G", "B", "Y"};
        const auto isColor = [&](const ChannelRef& ref) {
            const std::string_view suffix = SplitChannelName(ChannelOf(file, ref).name).suffix;
            return std::find(std::begin(colors), std::end(colors), suffix) != std::end(colors);
        };
        bool isLossy = false;
        bool isRounded = false;
        std::string compression;
        for (const CryptomatteRank& rank : result.ranks) {
            const std::string& name = file.parts[file.layers[rank.id.layer].part].compression;
            const bool lossy =
                name.starts_with("dwa") && (isColor(rank.id) || isColor(rank.coverage));
            const bool rounded =
                name == "pxr24" && ChannelOf(file, rank.id).type == SampleType::Float;
            if (lossy || rounded) compression = name;
            isLossy = isLossy || lossy;
            isRounded = isRounded || rounded;
        }
        if (isLossy) {
            Warn("compression " + compression +
                 " is lossy for channels of these names; expect wrong mattes, and render with "
                 "another, such as zip");
        } else if (isRounded) {
            Warn("compression " + compression +
                 " rounds its ids, so that names aren't found; render with another, such as zip");
        }
    }

    void ReadNames() {
        if (!metadata) {
            Warn("there is no metadata for it; its mattes are named by their ids");
            return;
        }
        CheckField("hash", "MurmurHash3_32");
        CheckField("conversion", "uint32_to_float32");
        const std::string text = ManifestText();
        if (text.empty()) return;
        result.manifest = ReadManifest(text);
        for (const std::string& warning : result.manifest.warnings)
            Warn(warning);
        result.manifest.warnings.clear();
    }

    void CheckField(const char* field, const char* known) {
        const std::string value = metadata->Field(field);
        if (value.empty() || value == known) return;
        Warn(std::string("its ") + field + " is \"" + value + "\" and not " + known +
             "; names may not be found");
    }

    // Empty when there is none; then the warning has been given.
    std::string ManifestText() {
        std::string text = metadata->Field("manifest");
        const std::string name = metadata->Field("manif_file");
        if (!text.empty()) return text;
        if (name.empty()) {
            Warn("it has no manifest; its mattes are named by their ids");
            return {};
        }
        try {
            text = ReadSidecar(file.path, name);
            if (text.empty()) throw InputError("is empty");
        } catch (const InputError& fault) {
            Warn("its manifest file \"" + name + "\" " + fault.what() +
                 "; its mattes are named by their ids");
        }
        return text;
    }

    const Description& file;
    const Group& group;
    const Metadata* metadata;
    Cryptomatte result;
    std::vector<std::string> warnings;
};

// Without metadata only names that say so, and only where the channels can hold ids: a renderer's
// own pass may be called so too.
bool LooksLikeCryptomatte(const Group& group) {
    return IsCryptomatteName(group.place.pass);
}

void FindPreviews(const LayerPlaces& places, std::vector<Cryptomatte>& all) {
    for (std::size_t i = 0; i < places.All().size(); ++i) {
        for (Cryptomatte& each : all) {
            if (places.All()[i] == each.place) each.preview = i;
        }
    }
}

void WarnOfUnused(const std::vector<Metadata>& metadata, std::vector<std::string>& warnings) {
    std::vector<std::string> told;
    for (const Metadata& each : metadata) {
        const std::string name = each.Field("name");
        // Several parts may repeat it.
        const std::string subject = name.empty() ? each.key : name;
        if (each.used || std::find(told.begin(), told.end(), subject) != told.end()) continue;
        told.push_back(subject);
        warnings.push_back(name.empty() ? "the Cryptomatte metadata of key \"" + each.key +
                                              "\" has no name; it is left out"
                                        : "Cryptomatte \"" + name +
                                              "\": there is metadata for it but no channels; no "
                                              "mattes come of it");
    }
}

}  // namespace

std::string_view NameOf(CryptomatteKind kind) {
    constexpr std::string_view names[] = {"object", "material", "asset", "other"};
    return names[static_cast<std::size_t>(kind)];
}

Cryptomattes FindCryptomattes(const Description& file, const LayerPlaces& places) {
    Cryptomattes found;
    std::vector<Metadata> metadata = ReadMetadata(file);
    for (const Group& group : ReadGroups(places)) {
        const Metadata* said = FindMetadata(metadata, group, file);
        if (!said && !LooksLikeCryptomatte(group)) continue;
        Reader reader(file, group, said);
        found.all.push_back(reader.Read());
        for (std::string& warning : reader.TakeWarnings())
            found.warnings.push_back(std::move(warning));
    }
    FindPreviews(places, found.all);
    WarnOfUnused(metadata, found.warnings);
    return found;
}

}  // namespace command
