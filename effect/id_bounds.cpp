#include "effect/id_bounds.h"

#include <optional>
#include <vector>

#include "sources/bitmap_parts.h"
#include "sources/fragment_reader.h"
#include "sources/id_bounds.h"

namespace effect {
namespace {

// The boxes of one channel's IDs while they grow: a table, since every fragment of the frame looks
// its ID up.
template <class ID>
class Boxes {
  public:
    explicit Boxes(int index) : channel(index), boxes(std::size_t{1} << (8 * sizeof(ID))) {}

    // The fragment at which `reader` stands, if it has an ID.
    void Add(GBufReader* reader, IPoint2 pixel) {
        ID id = 0;
        if (reader->ReadChannelData(channel, &id)) boxes[id] += pixel;
    }

    void MoveTo(sources::IDBounds& bounds) const {
        for (std::size_t id = 0; id < boxes.size(); ++id) {
            if (boxes[id].IsEmpty()) continue;
            bounds.emplace_hint(bounds.end(), static_cast<std::uint16_t>(id), boxes[id]);
        }
    }

  private:
    int channel;
    std::vector<Box2> boxes;
};

template <class ID>
std::optional<Boxes<ID>> BoxesIf(DWORD present, int index) {
    return present ? std::optional<Boxes<ID>>(std::in_place, index) : std::nullopt;
}

}  // namespace

void CollectIDBounds(Bitmap* bitmap) {
    sources::nodeRenderIDBounds.clear();
    sources::mtlIDBounds.clear();
    sources::nodeIDBounds.clear();
    GBuffer* gbuffer = sources::GBufferOf(bitmap);
    if (!gbuffer) return;
    const DWORD present = bitmap->Storage()->ChannelsPresent();
    auto nodeRenderIDs = BoxesIf<UWORD>(present & BMM_CHAN_NODE_RENDER_ID, GB_NODE_RENDER_ID);
    auto mtlIDs = BoxesIf<UBYTE>(present & BMM_CHAN_MTL_ID, GB_MTL_ID);
    auto nodeIDs = BoxesIf<UWORD>(present & BMM_CHAN_NODE_ID, GB_NODE_ID);
    if (!nodeRenderIDs && !mtlIDs && !nodeIDs) return;
    sources::FragmentReader reader(gbuffer);
    const int right = sources::WidthOf(bitmap) - 1;
    const int bottom = sources::HeightOf(bitmap) - 1;
    for (int y = 0; y <= bottom; ++y) {
        reader.ForEachPixel(y, 0, right, [&](int x, auto fragments) {
            fragments([&](GBufReader* fragment) {
                if (nodeRenderIDs) nodeRenderIDs->Add(fragment, {x, y});
                if (mtlIDs) mtlIDs->Add(fragment, {x, y});
                if (nodeIDs) nodeIDs->Add(fragment, {x, y});
            });
        });
    }
    if (nodeRenderIDs) nodeRenderIDs->MoveTo(sources::nodeRenderIDBounds);
    if (mtlIDs) mtlIDs->MoveTo(sources::mtlIDBounds);
    if (nodeIDs) nodeIDs->MoveTo(sources::nodeIDBounds);
}

}  // namespace effect
