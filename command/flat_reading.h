// One pass over the flat parts of a render file that makes all of a frame's images and its
// fragments: every block of pixels is decompressed once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "command/camera_axes.h"
#include "command/fragments.h"
#include "command/id_lists.h"
#include "command/image_builder.h"
#include "command/passes.h"
#include "command/render_file.h"
#include "command/row_requests.h"
#include "command/row_values.h"

namespace command {

// Where the fragments' values stand; what isn't set isn't read.
struct FragmentSources {
    std::span<const CryptomatteRank> objects{};
    std::span<const CryptomatteRank> materials{};
    std::optional<ChannelRef> objectID{};
    std::optional<ChannelRef> materialID{};
    std::optional<ChannelRef> depth{};
    std::optional<std::array<ChannelRef, 3>> normal{};
    // Turns normals of the world into the camera's.
    std::optional<CameraAxes> camera{};
    // Which image is the picture whose colours they have.
    std::optional<std::size_t> picture{};
};

class FlatReading {
  public:
    // The frame is the display window of `framePart`; the file outlives this.
    FlatReading(RenderFile& file, std::size_t framePart);

    // The image's number. An image without alpha that is to be opaque has one that is 1 where the
    // part has pixels, unless it has pixels everywhere.
    std::size_t AddImage(const PassChannels& channels, bool opaqueWithoutAlpha = false);
    // `builder` and the sets outlive Read; null sets take no numbers.
    void MakeFragments(const FragmentSources& sources, FragmentBuilder& builder,
                       NumberSet* objectNumbers, NumberSet* materialNumbers);

    bool HasImages() const { return !images.empty(); }

    // Throws InputError.
    void Read();

    // Once for each image, after Read.
    host::Owned<host::ImageBitmap> TakeImage(std::size_t number, float pixelAspect);
    // Values of the image that weren't finite and were made so.
    std::uint64_t NotFinite(std::size_t number) const { return images[number].builder.NotFinite(); }

  private:
    // A colour that the file doesn't have.
    static constexpr auto missing = static_cast<std::size_t>(-1);
    // Places among the rows that come.
    struct Image {
        ImageBuilder builder;
        std::vector<std::size_t> places;
        bool madeAlpha = false;
    };
    struct RankPlaces {
        std::size_t id = 0;
        std::size_t coverage = 0;
        RowValues values{};
    };
    struct Value {
        std::size_t place = 0;
        RowValues values{};
    };
    using Rows = std::span<const ChannelRow>;

    const Channel& ChannelOf(const ChannelRef& channel) const;
    std::vector<RankPlaces> Request(std::span<const CryptomatteRank> ranks);
    std::optional<Value> Request(const std::optional<ChannelRef>& channel);
    void AddRow(Image& image, Rows rows);
    // 1 where the part has pixels.
    std::span<const float> Opaque(const ChannelRow& pixels);
    ChannelRow MadeAlpha(const ChannelRow& pixels);
    void AddFragments(Rows rows);
    void ReadRanks(std::vector<RankPlaces>& places, Rows rows, std::vector<RankRow>& ranks) const;
    std::span<const float> Floats(Value& value, Rows rows) const;
    void ReadNormals(Rows rows, FragmentRow& row);
    void ReadColors(Rows rows, FragmentRow& row);

    RenderFile& file;
    std::size_t framePart;
    std::size_t width;
    std::size_t height;
    RowRequests requests;
    std::vector<Image> images;
    // One image's rows.
    std::vector<ChannelRow> ofImage;
    std::vector<float> opaque;
    std::vector<std::uint16_t> opaqueHalfs;
    std::vector<float> black;
    std::vector<std::uint16_t> blackHalfs;

    FragmentBuilder* fragments = nullptr;
    NumberSet* objectNumbers = nullptr;
    NumberSet* materialNumbers = nullptr;
    std::vector<RankPlaces> objects;
    std::vector<RankPlaces> materials;
    std::vector<RankRow> objectRows;
    std::vector<RankRow> materialRows;
    std::optional<Value> objectID;
    std::optional<Value> materialID;
    std::optional<Value> depth;
    std::array<std::optional<Value>, 3> normal;
    std::array<std::vector<float>, 3> turned;
    std::optional<CameraAxes> camera;
    // Red, green, blue, alpha of the picture; none when colours aren't wanted. Without alpha it is
    // what the image's made one is.
    std::array<std::optional<Value>, 4> color;
};

}  // namespace command
