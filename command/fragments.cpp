#include "command/fragments.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace command {
namespace {

constexpr std::size_t usualRanks = 16;

float DepthOf(float z) {
    return z > 0.0F && z < backgroundDepth ? z : std::numeric_limits<float>::quiet_NaN();
}

DWORD NormalOf(float x, float y, float z) {
    const float length = x * x + y * y + z * z;
    if (!(length > 0.0F) || !std::isfinite(length)) return 0;
    const float scale = 1.0F / std::sqrt(length);
    return CompressNormal({x * scale, y * scale, z * scale});
}

std::uint32_t At(std::span<const std::uint32_t> row, std::size_t x) {
    return row.empty() ? 0 : row[x];
}

UWORD ObjectNumber(std::uint32_t number) {
    return number <= 65535 ? static_cast<UWORD>(number) : UWORD{0};
}

UBYTE MaterialNumber(std::uint32_t number) {
    return number <= mostMaterials ? static_cast<UBYTE>(number) : UBYTE{0};
}

void Cover(host::Fragment& fragment, int units) {
    fragment.coverage = static_cast<UBYTE>(units);
    fragment.weight = {fragment.coverage, fragment.coverage, fragment.coverage};
}

// The larger one of each pixel. NaN is never larger.
void Raise(std::vector<float>& largest, std::span<const float> row) {
    float* out = largest.data();
    const float* in = row.data();
    for (std::size_t x = 0; x < largest.size(); ++x)
        out[x] = in[x] > out[x] ? in[x] : out[x];
}

void RaiseByRest(std::vector<float>& largest, std::span<const RankRow> ranks) {
    for (const RankRow& rank : ranks.subspan(ranks.empty() ? 0 : 1))
        Raise(largest, rank.coverages);
}

// `ranks` become those of the pixel that cover anything.
template <class IndexOf>
void Gather(std::span<const RankRow> rows, std::size_t x, IndexOf indexOf,
            std::vector<Rank>& ranks) {
    ranks.clear();
    for (std::size_t rank = 0; rank < rows.size(); ++rank) {
        const std::uint32_t bits = rows[rank].ids[x];
        const float coverage = rows[rank].coverages[x];
        if (bits == 0 || !(coverage > 0.0F)) continue;
        ranks.push_back({indexOf(rank, bits), coverage});
    }
}

// NaN and what is below 0 are 0, what is above 1 is 255.
UBYTE ByteOf(float value) {
    if (!(value > 0.0F)) return 0;
    // Truncated, this is the nearest.
    const float steps = value * 255.0F + 0.5F;
    return value >= 1.0F ? 255 : static_cast<UBYTE>(steps);
}

}  // namespace

FragmentBuilder::FragmentBuilder(host::FragmentBuffer& fragmentBuffer,
                                 FragmentOptions fragmentOptions)
    : buffer(fragmentBuffer), options(std::move(fragmentOptions)), join(usualRanks, usualRanks) {
    const auto width = static_cast<std::size_t>(std::max(buffer.Width(), 0));
    largest.resize(width);
    largestOfRest.resize(width);
}

void FragmentBuilder::AppendRow(const FragmentRow& row) {
    const bool ranked = !row.objects.empty() || !row.materials.empty();
    if (ranked) FindCovered(row);
    const std::size_t width = largest.size();
    for (std::size_t x = 0; x < width; ++x) {
        if (ranked && largest[x] > 0.0F) {
            AppendRanks(row, x);
        } else {
            AppendPlain(row, x);
        }
    }
}

void FragmentBuilder::FindCovered(const FragmentRow& row) {
    objectLookups.resize(row.objects.size());
    materialLookups.resize(row.materials.size());
    std::fill(largestOfRest.begin(), largestOfRest.end(), 0.0F);
    RaiseByRest(largestOfRest, row.objects);
    RaiseByRest(largestOfRest, row.materials);
    std::copy(largestOfRest.begin(), largestOfRest.end(), largest.begin());
    if (!row.objects.empty()) Raise(largest, row.objects[0].coverages);
    if (!row.materials.empty()) Raise(largest, row.materials[0].coverages);
}

void FragmentBuilder::AppendRanks(const FragmentRow& row, std::size_t x) {
    fragments.clear();
    if (const auto only = OnlyFragment(row, x)) {
        Add(Base(row, x), *only, row, x);
    } else {
        const auto objectIndex = [this](std::size_t rank, std::uint32_t bits) {
            return ObjectIndex(rank, bits);
        };
        const auto materialIndex = [this](std::size_t rank, std::uint32_t bits) {
            return MaterialIndex(rank, bits);
        };
        Gather(row.objects, x, objectIndex, objects);
        Gather(row.materials, x, materialIndex, materials);
        const auto joined = join.Join(objects, materials);
        if (joined.empty()) {
            AppendPlain(row, x);
            return;
        }
        const host::Fragment base = Base(row, x);
        for (const JoinedFragment& each : joined)
            Add(base, each, row, x);
    }
    if (!row.color[0].empty() && Keeps(BMM_CHAN_COLOR | BMM_CHAN_REALPIX)) {
        int units = 0;
        for (const host::Fragment& each : fragments)
            units += each.coverage;
        SetColor(fragments[0], row.color[0][x], row.color[1][x], row.color[2][x], units / 255.0);
        for (host::Fragment& each : fragments) {
            each.color = fragments[0].color;
            each.realPixel = fragments[0].realPixel;
        }
    }
    buffer.AddPixel(fragments);
}

// The fragment of a pixel that is covered by one object of one material, as most pixels are.
std::optional<JoinedFragment> FragmentBuilder::OnlyFragment(const FragmentRow& row, std::size_t x) {
    if (largestOfRest[x] > 0.0F || row.objects.empty()) return std::nullopt;
    const std::uint32_t object = row.objects[0].ids[x];
    const int units = CoverageUnits(double{row.objects[0].coverages[x]});
    if (object == 0 || units == 0) return std::nullopt;
    JoinedFragment only{ObjectIndex(0, object), noMaterial, static_cast<std::uint8_t>(units)};
    if (only.object == noObject) return std::nullopt;
    if (!row.materials.empty()) {
        const std::uint32_t material = row.materials[0].ids[x];
        if (material == 0 || CoverageUnits(double{row.materials[0].coverages[x]}) != units) {
            return std::nullopt;
        }
        only.material = static_cast<std::uint8_t>(MaterialIndex(0, material));
    }
    return only;
}

void FragmentBuilder::AppendPlain(const FragmentRow& row, std::size_t x) {
    host::Fragment fragment = Base(row, x);
    fragment.nodeID = ObjectNumber(At(row.objectIDs, x));
    fragment.mtlID = MaterialNumber(At(row.materialIDs, x));
    const bool known = !std::isnan(fragment.z) || fragment.nodeID != 0 || fragment.mtlID != 0 ||
                       fragment.normal != 0;
    const bool colored = !row.color[3].empty();
    const int units = colored ? CoverageUnits(double{row.color[3][x]}) : 255;
    if (!known || units == 0) {
        buffer.AddPixel({});
        return;
    }
    fragment.renderID = unknownObject;
    Cover(fragment, units);
    if (colored) {
        SetColor(fragment, row.color[0][x], row.color[1][x], row.color[2][x], units / 255.0);
    }
    buffer.AddPixel({&fragment, 1});
}

host::Fragment FragmentBuilder::Base(const FragmentRow& row, std::size_t x) const {
    host::Fragment fragment;
    if (!row.depth.empty()) fragment.z = DepthOf(row.depth[x]);
    if (!row.normal[0].empty() && Keeps(BMM_CHAN_NORMAL)) {
        fragment.normal = NormalOf(row.normal[0][x], row.normal[1][x], row.normal[2][x]);
    }
    return fragment;
}

void FragmentBuilder::Add(const host::Fragment& base, const JoinedFragment& joined,
                          const FragmentRow& row, std::size_t x) {
    host::Fragment& fragment = fragments.emplace_back(base);
    fragment.renderID = joined.object;
    fragment.nodeID = NumberOf(joined.object, At(row.objectIDs, x));
    fragment.mtlID =
        row.materials.empty() ? MaterialNumber(At(row.materialIDs, x)) : joined.material;
    Cover(fragment, joined.coverage);
}

void FragmentBuilder::AppendDeepPixel(std::span<const DeepFragment> samples) {
    if (accounts.empty()) accounts.resize(2 * 65536);
    ++deepPixels;
    fragments.clear();
    double seen = 1.0;
    for (const DeepFragment& sample : samples) {
        if (!(sample.alpha > 0.0F)) continue;
        const double alpha = std::min(double{sample.alpha}, 1.0);
        const double coverage = seen * alpha;
        seen *= 1.0 - alpha;
        host::Fragment fragment;
        if (options.objectIndex && sample.object != 0) {
            fragment.renderID = options.objectIndex(sample.object);
        }
        // Whatever covers a part of the pixel is something.
        if (fragment.renderID == noObject) fragment.renderID = unknownObject;
        fragment.nodeID = NumberOf(fragment.renderID, sample.objectID);
        const int units = CoverMore(fragment.renderID, fragment.nodeID, coverage);
        if (units > 0) {
            Cover(fragment, units);
            fragment.z = DepthOf(sample.z);
            if (Keeps(BMM_CHAN_NORMAL)) {
                fragment.normal = NormalOf(sample.normal.x, sample.normal.y, sample.normal.z);
            }
            fragment.mtlID = MaterialNumber(sample.materialID);
            if (options.materialIndex && sample.material != 0) {
                fragment.mtlID = static_cast<UBYTE>(options.materialIndex(sample.material));
            }
            SetColor(fragment, sample.color[0], sample.color[1], sample.color[2],
                     double{sample.alpha});
            fragments.push_back(fragment);
        }
        if (seen <= 0.0) break;
    }
    buffer.AddPixel(fragments);
}

// Adds to what the object covers of the deep pixel; gives the units that are new.
int FragmentBuilder::CoverMore(std::uint16_t object, UWORD number, double coverage) {
    const std::size_t place =
        object == unknownObject ? std::size_t{65536} + number : std::size_t{object};
    Account& account = accounts[place];
    if (account.pixel != deepPixels) account = {deepPixels, 0.0, 0};
    account.coverage += coverage;
    return CoverageUnits(account.coverage) -
           std::exchange(account.units, CoverageUnits(account.coverage));
}

void FragmentBuilder::SetColor(host::Fragment& fragment, float red, float green, float blue,
                               double coverage) const {
    if (!Keeps(BMM_CHAN_COLOR | BMM_CHAN_REALPIX)) return;
    // Without what the formats can't hold: below 0, NaN, infinity.
    const auto straight = [scale = 1.0 / coverage](float value) {
        if (!(value > 0.0F)) return 0.0F;
        constexpr double most = std::numeric_limits<float>::max();
        return static_cast<float>(std::min(double{value} * scale, most));
    };
    const float color[] = {straight(red), straight(green), straight(blue)};
    if (Keeps(BMM_CHAN_COLOR)) {
        fragment.color = {ByteOf(color[0]), ByteOf(color[1]), ByteOf(color[2])};
    }
    if (Keeps(BMM_CHAN_REALPIX)) fragment.realPixel = MakeRealPixel(color[0], color[1], color[2]);
}

std::uint16_t FragmentBuilder::ObjectIndex(std::size_t rank, std::uint32_t bits) {
    Lookup& last = objectLookups[rank];
    if (last.bits != bits) last = {bits, options.objectIndex(bits)};
    return last.index;
}

std::uint16_t FragmentBuilder::MaterialIndex(std::size_t rank, std::uint32_t bits) {
    Lookup& last = materialLookups[rank];
    if (last.bits != bits) last = {bits, options.materialIndex(bits)};
    return last.index;
}

UWORD FragmentBuilder::NumberOf(std::uint16_t object, std::uint32_t ofPixel) const {
    return object < options.objectIDs.size() ? options.objectIDs[object] : ObjectNumber(ofPixel);
}

}  // namespace command
