// The G-Buffer of a frame of 1920 x 1080 from the planes of a render file, as a still life has
// them: objects before nothing, and edges where two objects and their materials meet.
#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>
#include <vector>

#include "command/fragments.h"
#include "command/id_index.h"

namespace {

using command::FragmentRow;
using command::RankRow;

constexpr std::size_t width = 1920;
constexpr std::size_t height = 1080;
constexpr std::uint32_t objectCount = 40;
constexpr std::size_t ranks = 6;

constexpr DWORD mattes = BMM_CHAN_MTL_ID | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID;
constexpr DWORD allChannels = mattes | BMM_CHAN_Z | BMM_CHAN_NODE_ID | BMM_CHAN_NORMAL |
                              BMM_CHAN_REALPIX | BMM_CHAN_COLOR | BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;

// Ids as hashes have them.
std::uint32_t IdOf(std::uint32_t number) {
    return (number + 1) * 2654435761U;
}

// The planes of one row, which stand for all rows of a frame.
class Planes {
  public:
    // One pixel in `edge` is an edge.
    explicit Planes(std::size_t edge) {
        for (auto* side : {&objects, &materials}) {
            side->ids.assign(ranks, std::vector<std::uint32_t>(width));
            side->coverages.assign(ranks, std::vector<float>(width));
        }
        depth.resize(width);
        for (auto* row : {&x, &y, &z, &red, &alpha})
            row->resize(width);
        for (std::size_t i = 0; i < width; ++i)
            SetPixel(i, i % edge == 0);
        for (std::size_t rank = 0; rank < ranks; ++rank) {
            objectRows.push_back({objects.ids[rank], objects.coverages[rank]});
            materialRows.push_back({materials.ids[rank], materials.coverages[rank]});
        }
    }

    FragmentRow Get() const {
        FragmentRow row;
        row.objects = objectRows;
        row.materials = materialRows;
        row.depth = depth;
        row.normal = {x, y, z};
        row.color = {red, red, red, alpha};
        return row;
    }

  private:
    struct Side {
        std::vector<std::vector<std::uint32_t>> ids;
        std::vector<std::vector<float>> coverages;
    };

    void SetPixel(std::size_t i, bool edge) {
        const std::size_t run = i / 24;
        const bool empty = run % 4 == 3;
        depth[i] = empty ? 1e10F : 5.0F + 0.01F * static_cast<float>(run);
        const float angle = 0.01F * static_cast<float>(i);
        x[i] = std::sin(angle);
        z[i] = std::cos(angle);
        red[i] = empty ? 0.0F : 0.4F;
        alpha[i] = empty ? 0.0F : 1.0F;
        if (empty) return;
        const auto number = static_cast<std::uint32_t>(run) % objectCount;
        for (Side* side : {&objects, &materials}) {
            side->ids[0][i] = IdOf(number);
            side->coverages[0][i] = edge ? 0.625F : 1.0F;
            if (!edge) continue;
            side->ids[1][i] = IdOf(number + 1);
            side->coverages[1][i] = 0.375F;
        }
    }

    Side objects;
    Side materials;
    std::vector<float> depth;
    std::vector<float> x;
    std::vector<float> y;
    std::vector<float> z;
    std::vector<float> red;
    std::vector<float> alpha;
    std::vector<RankRow> objectRows;
    std::vector<RankRow> materialRows;
};

// Arguments: the G-Buffer's channels, and how many pixels there are to an edge.
void BuildFrame(benchmark::State& state) {
    const Planes planes(static_cast<std::size_t>(state.range(1)));
    std::vector<std::uint32_t> ids(objectCount + 1);
    for (std::uint32_t number = 0; number <= objectCount; ++number)
        ids[number] = IdOf(number);
    const command::IdIndex index(ids);
    for (auto _ : state) {
        host::FragmentBuffer buffer(width, height, static_cast<DWORD>(state.range(0)));
        command::FragmentOptions options;
        options.objectIndex = [&](std::uint32_t id) {
            return static_cast<std::uint16_t>(index.Find(id));
        };
        options.materialIndex = [&](std::uint32_t id) {
            return static_cast<std::uint16_t>(1 + index.Find(id) % command::mostMaterials);
        };
        command::FragmentBuilder builder(buffer, std::move(options));
        for (std::size_t row = 0; row < height; ++row)
            builder.AppendRow(planes.Get());
        benchmark::DoNotOptimize(buffer.IsComplete());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * width * height));
}
BENCHMARK(BuildFrame)
    ->ArgNames({"channels", "edge"})
    ->Args({mattes, 20})
    ->Args({mattes, 2})
    ->Args({allChannels, 20})
    ->Unit(benchmark::kMillisecond);

}  // namespace
