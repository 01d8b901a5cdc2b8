// What a renderer left on disk: what is in it, and its picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "command/camera.h"
#include "command/deep_samples.h"

namespace command {

// Pixels a side that a document of the effect can have.
constexpr int largestSide = 65535;

// Samples of a pixel with red, green, blue and alpha.
constexpr std::size_t rgbaComponents = 4;

enum class SampleType : std::uint8_t { Half, Float, Unsigned32, Unsigned16, Unsigned8 };

// Pixels, both ends included.
struct Window {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;

    std::int64_t Width() const { return std::int64_t{right} - left + 1; }
    std::int64_t Height() const { return std::int64_t{bottom} - top + 1; }
    bool Contains(const Window& other) const {
        return left <= other.left && top <= other.top && right >= other.right &&
               bottom >= other.bottom;
    }
    friend bool operator==(const Window&, const Window&) = default;
};

struct Channel {
    // Whole, as the file has it.
    std::string name{};
    // The last component of the name.
    std::string suffix{};
    SampleType type = SampleType::Half;
    // One sample every so many pixels.
    int xSampling = 1;
    int ySampling = 1;
};

// Channels that belong together. In a file of one part the name is what the channels' names have in
// common; the layer without a name of its own is called by its channels ("RGBA").
struct Layer {
    std::string name;
    // The channels have no name in front, or only their part's.
    bool plain = false;
    std::size_t part = 0;
    std::vector<Channel> channels;
};

// Text, one number or several; nothing for a type that isn't taken apart.
using AttributeValue = std::variant<std::monostate, std::string, std::vector<std::string>, double,
                                    std::vector<double>>;

struct Attribute {
    std::string name;
    std::string type;
    AttributeValue value;
};

struct Part {
    // Empty where the format has none.
    std::string name{};
    // "scanline", "tiled 64x64", "deep scanline", "deep tiled".
    std::string storage{};
    std::string compression{};
    Window dataWindow{};
    Window displayWindow{};
    // Width of a pixel over its height.
    float pixelAspect = 1.0F;
    bool deep = false;
    // Every block of pixels is there.
    bool complete = true;
    std::vector<Attribute> attributes{};
    // As the attributes tell it.
    std::optional<RenderCamera> camera{};
};

struct Description {
    // As the user wrote it.
    std::string path;
    std::string format;
    std::vector<Part> parts;
    std::vector<Layer> layers;
    // One line each, without the path.
    std::vector<std::string> warnings;
};

// The camera of the frame's part, else of the first part that has one; null when none has.
const RenderCamera* CameraOf(const Description& file, std::size_t framePart);

// The layer that is the picture, and which of its channels is which.
struct Beauty {
    // Index into Description::layers.
    std::size_t layer = 0;
    // Whole channel names; a grey picture has the same one three times. Blue may be empty, for
    // none.
    std::string red;
    std::string green;
    std::string blue;
    // Empty for none.
    std::string alpha;
    // Luminance and two channels of colour difference.
    bool lumaChroma = false;
    // Why this layer, for the user: "its channels have no layer name".
    std::string why;

    bool IsGrey() const { return red == green && red == blue; }
};

// The picture: interleaved red, green, blue, alpha, rows from the top, linear and premultiplied.
// Every value is finite.
struct Picture {
    int width = 0;
    int height = 0;
    float pixelAspect = 1.0F;
    // Whether alpha tells anything. Without it, it is 1.
    bool hasAlpha = false;
    // Halfs by their bits, or floats.
    std::variant<std::vector<std::uint16_t>, std::vector<float>> components;
    // Values that were NaN (now 0) or infinite (now the largest value of their kind).
    std::uint64_t notFinite = 0;
};

// A channel, by its place in the description.
struct ChannelRef {
    // Index into Description::layers, and into that layer's channels.
    std::size_t layer = 0;
    std::size_t channel = 0;

    friend bool operator==(const ChannelRef&, const ChannelRef&) = default;
};

// One row of a channel. It lives as long as the call that hands it over.
struct ChannelRow {
    SampleType type = SampleType::Half;
    // As many as the frame is wide, aligned for their type: halfs by their bits, unsigned integers
    // as such, NaN and infinity as the file has them. Formats other than OpenEXR give floats.
    const void* samples = nullptr;
    // The columns of the frame that the part's data window covers, none of them when count is 0.
    // All other samples are 0 and stand for nothing.
    int first = 0;
    int count = 0;
};

// `y` is 0 at the frame's top. `rows` has one row for each channel, in the order asked for.
using RowConsumer = std::function<void(int y, std::span<const ChannelRow> rows)>;

// What of a deep part is read: whole channel names, empty for none.
struct DeepChannels {
    // Index into Description::parts.
    std::size_t part = 0;
    // The same name may stand for all three. A colour that is missing is 0.
    std::string red{};
    std::string green{};
    std::string blue{};
    // Without it samples are opaque.
    std::string alpha{};
    // Needed.
    std::string z{};
    // Without it samples are points.
    std::string zBack{};
    // At most mostDeepIds. Their values go into DeepSample::ids in this order.
    std::vector<std::string> ids{};
};

// One row of deep pixels. It lives as long as the call that hands it over.
struct DeepRow {
    // Those of all pixels, from the left.
    std::span<const DeepSample> samples;
    // For each pixel of the frame's width where its samples start; one more for the end.
    std::span<const std::size_t> starts;

    // Tidy, front to back; none outside the data window.
    std::span<const DeepSample> Pixel(std::size_t x) const {
        return samples.subspan(starts[x], starts[x + 1] - starts[x]);
    }
};

// `y` is 0 at the frame's top.
using DeepRowConsumer = std::function<void(int y, const DeepRow& row)>;

class RenderFile {
  public:
    RenderFile() = default;
    RenderFile(const RenderFile&) = delete;
    RenderFile& operator=(const RenderFile&) = delete;
    virtual ~RenderFile() = default;

    virtual const Description& GetDescription() const = 0;
    // The frame is the display window: what the data window doesn't cover is empty (all zeros), and
    // what lies outside is left out. Memory is taken as pixels are read, so that a file that lies
    // about its size costs no more than it holds. Throws InputError.
    virtual Picture Read(const Beauty& beauty) = 0;
    // Reads channels of any flat parts in one pass. The frame is the display window of the part
    // `framePart`, and each part lies in it where its data window says; in OpenEXR the parts share
    // the display window. A row for each line of the frame, from above to below, those that no data
    // window covers included. What is in memory at a time is a block of rows. Throws InputError:
    // for channels of deep parts or with fewer samples than pixels and for parts that aren't
    // complete before the first row, for damaged pixels when they come up. What the consumer throws
    // passes.
    virtual void ReadRows(std::size_t framePart, std::span<const ChannelRef> channels,
                          const RowConsumer& consumer) = 0;
    // The same for one deep part.
    virtual void ReadDeepRows(std::size_t framePart, const DeepChannels& channels,
                              const DeepRowConsumer& consumer);
};

// By what the file holds, not by its name. Throws InputError.
std::unique_ptr<RenderFile> OpenRenderFile(const std::string& path);
// The same from memory, which must outlive the result. `path` is for messages and, for formats
// without a signature, their suffix.
std::unique_ptr<RenderFile> OpenRenderFile(const std::string& path, const char* bytes,
                                           std::size_t size);

}  // namespace command
