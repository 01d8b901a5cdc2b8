#include "command/image_file.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/finite.h"
#include "command/layer_names.h"
#include "command/library_errors.h"
#include "command/number_text.h"
#include "command/orientation.h"
#include "command/pixel_aspect.h"
#include "command/quiet_stderr.h"
#include "command/transfer_curve.h"

namespace command {
namespace {

constexpr std::size_t components = 4;
// Bytes of rows as the file has them that are held at a time.
constexpr std::size_t blockBytes = std::size_t{1} << 20;

SampleType TypeOf(const OIIO::TypeDesc& type) {
    switch (type.basetype) {
        case OIIO::TypeDesc::UINT8:
            return SampleType::Unsigned8;
        case OIIO::TypeDesc::UINT16:
            return SampleType::Unsigned16;
        case OIIO::TypeDesc::UINT32:
            return SampleType::Unsigned32;
        case OIIO::TypeDesc::HALF:
            return SampleType::Half;
        default:
            return SampleType::Float;
    }
}

bool IsForDisplay(SampleType type) {
    return type == SampleType::Unsigned8 || type == SampleType::Unsigned16;
}

// What the file says of its curve, else what its kind of values is taken for.
TransferCurve CurveOf(const OIIO::ImageSpec& spec) {
    const std::string space = spec.get_string_attribute("oiio:ColorSpace");
    if (EqualIgnoringCase(space, "linear")) return {};
    if (EqualIgnoringCase(space, "sRGB")) return {TransferCurve::Kind::SRGB};
    double gamma = spec.get_float_attribute("oiio:Gamma", 0.0F);
    constexpr std::string_view prefix = "Gamma";
    if (gamma <= 0 && space.starts_with(prefix)) {
        std::from_chars(space.data() + prefix.size(), space.data() + space.size(), gamma);
    }
    if (std::isfinite(gamma) && gamma > 0) {
        if (gamma == 1.0) return {};
        return {TransferCurve::Kind::Power, gamma};
    }
    return {IsForDisplay(TypeOf(spec.format)) ? TransferCurve::Kind::SRGB
                                              : TransferCurve::Kind::Linear};
}

std::string CurveName(const TransferCurve& curve) {
    switch (curve.kind) {
        case TransferCurve::Kind::SRGB:
            return "sRGB";
        case TransferCurve::Kind::Power:
            return "gamma " + NumberText(static_cast<float>(curve.gamma), 2);
        case TransferCurve::Kind::Linear:
            break;
    }
    return "linear";
}

// What becomes of a channel of the file.
struct Output {
    // Among the file's channels; -1 for none, which gives `otherwise`.
    int index = -1;
    // Decoded with the curve, and premultiplied.
    bool isColor = false;
    float otherwise = 0.0F;
};
using Outputs = std::array<Output, components>;

// Rows of the file's own values to linear, premultiplied floats.
class RowDecoder {
  public:
    // `alphaIndex` is the alpha of the colours among the file's channels; -1 for none.
    RowDecoder(const TransferCurve& transferCurve, SampleType sampleType, bool premultiplied,
               std::size_t channelCount, const Outputs& wanted, int alphaIndex)
        : curve(transferCurve),
          type(sampleType),
          premultipliedInFile(premultiplied && curve.kind != TransferCurve::Kind::Linear),
          straight(!premultiplied && alphaIndex >= 0),
          channels(channelCount),
          outputs(wanted),
          alpha(alphaIndex) {
        if (type == SampleType::Unsigned8) table = DecodeTable(curve, 255);
        if (type == SampleType::Unsigned16) table = DecodeTable(curve, 65535);
    }

    // The type that rows come in.
    OIIO::TypeDesc RowType() const {
        if (type == SampleType::Unsigned8) return OIIO::TypeDesc::UINT8;
        if (type == SampleType::Unsigned16) return OIIO::TypeDesc::UINT16;
        return OIIO::TypeDesc::FLOAT;
    }

    void Decode(const void* row, std::size_t pixels, float* out) const {
        switch (type) {
            case SampleType::Unsigned8:
                return DecodeRow(static_cast<const std::uint8_t*>(row), 255.0F, pixels, out);
            case SampleType::Unsigned16:
                return DecodeRow(static_cast<const std::uint16_t*>(row), 65535.0F, pixels, out);
            default:
                return DecodeRow(static_cast<const float*>(row), 1.0F, pixels, out);
        }
    }

  private:
    float Linear(float value) const {
        if (curve.kind == TransferCurve::Kind::Linear) return value;
        return static_cast<float>(command::Decode(curve, double{value}));
    }

    template <class Value>
    float Color(Value value, float opacity, float largest) const {
        if (premultipliedInFile && opacity > 0 && opacity < 1) {
            return Linear(static_cast<float>(value) / largest / opacity) * opacity;
        }
        const float linear = [&] {
            if constexpr (std::is_integral_v<Value>) {
                return table[value];
            } else {
                return Linear(value);
            }
        }();
        return straight ? linear * opacity : linear;
    }

    template <class Value>
    void DecodeRow(const Value* row, float largest, std::size_t pixels, float* out) const {
        for (std::size_t x = 0; x < pixels; ++x, row += channels, out += components) {
            const float opacity =
                alpha < 0 ? 1.0F
                          : static_cast<float>(row[static_cast<std::size_t>(alpha)]) / largest;
            for (std::size_t i = 0; i < components; ++i) {
                const Output& output = outputs[i];
                if (output.index < 0) {
                    out[i] = output.otherwise;
                    continue;
                }
                const Value value = row[static_cast<std::size_t>(output.index)];
                out[i] = output.isColor ? Color(value, opacity, largest)
                                        : static_cast<float>(value) / largest;
            }
        }
    }

    TransferCurve curve;
    SampleType type;
    bool premultipliedInFile;
    bool straight;
    std::size_t channels;
    Outputs outputs;
    int alpha;
    std::vector<float> table;
};

class ImageFile : public RenderFile {
  public:
    // `memory` may be null: the file is then read from disk.
    ImageFile(const std::string& path, const ImageFormat& format,
              std::unique_ptr<OIIO::Filesystem::IOProxy> memory)
        : proxy(std::move(memory)) {
        const QuietStderr quiet;
        input = OIIO::ImageInput::create(std::string(format.name), false, nullptr, "");
        if (!input) {
            throw InputError(path + ": the installed OpenImageIO reads no " +
                             std::string(format.title) + "; convert the file to OpenEXR");
        }
        OIIO::ImageSpec config;
        // Colours as they stand in the file: they are decoded before they are multiplied by alpha.
        config.attribute("oiio:UnassociatedAlpha", 1);
        if (proxy) {
            OIIO::Filesystem::IOProxy* pointer = proxy.get();
            config.attribute("oiio:ioproxy", OIIO::TypeDesc::PTR, &pointer);
        }
        description.path = path;
        if (!input->open(path, spec, config)) Fail();
        Describe(format);
    }

    ~ImageFile() override {
        const QuietStderr quiet;
        input.reset();
    }

    const Description& GetDescription() const override { return description; }

    Picture Read(const Beauty& beauty) override {
        const QuietStderr quiet;
        return Guarded(description.path, [&] { return ReadBeauty(beauty); });
    }

    // Up to four of a layer as a picture of their own: few of these files have more channels.
    void ReadRows(std::size_t, std::span<const ChannelRef> channels,
                  const RowConsumer& consumer) override {
        std::vector<Picture> pictures;
        std::vector<Place> places;
        Guarded(description.path, [&] {
            const QuietStderr quiet;
            CheckSize();
            for (std::size_t i = 0; i < channels.size();) {
                std::size_t count = 1;
                while (count < components && i + count < channels.size() &&
                       channels[i + count].layer == channels[i].layer) {
                    ++count;
                }
                for (std::size_t component = 0; component < count; ++component)
                    places.push_back({pictures.size(), component});
                pictures.push_back(ReadChannels(channels.subspan(i, count)));
                i += count;
            }
        });
        HandOver(pictures, places, consumer);
    }

  private:
    // Where a channel is: in which picture, and which component.
    struct Place {
        std::size_t picture = 0;
        std::size_t component = 0;
    };

    [[noreturn]] void Fail() {
        const std::string reason = input->geterror();
        throw InputError(description.path + ": damaged or cut short (" +
                         (reason.empty() ? "no pixels" : reason) + "); render or copy it again");
    }

    void Describe(const ImageFormat& format) {
        description.format = format.title;
        Part part;
        part.storage = spec.tile_width > 0 ? "tiled " + std::to_string(spec.tile_width) + "x" +
                                                 std::to_string(spec.tile_height)
                                           : "scanline";
        part.compression = spec.get_string_attribute("compression", "");
        part.dataWindow = {0, 0, spec.width - 1, spec.height - 1};
        part.displayWindow = part.dataWindow;
        part.pixelAspect = SoundAspect(spec.get_float_attribute("PixelAspectRatio", 1.0F));
        premultiplied = spec.get_int_attribute("oiio:UnassociatedAlpha", 0) == 0;
        orientation = spec.get_int_attribute("Orientation", 1);
        curve = CurveOf(spec);
        part.attributes.push_back({"transfer curve", "string", CurveName(curve)});
        if (spec.alpha_channel >= 0) {
            part.attributes.push_back(
                {"alpha", "string", std::string(premultiplied ? "premultiplied" : "straight")});
        }
        if (IsQuarterTurn(orientation)) {
            std::swap(part.dataWindow.right, part.dataWindow.bottom);
            part.displayWindow = part.dataWindow;
        }
        description.parts.push_back(std::move(part));
        DescribeChannels();
        if (input->seek_subimage(1, 0)) {
            description.warnings.emplace_back(
                "the file holds more than one picture; the first is "
                "read");
        }
        input->geterror();
        if (!input->seek_subimage(0, 0)) Fail();
    }

    void DescribeChannels() {
        std::vector<Channel> channels;
        for (std::size_t i = 0; i < static_cast<std::size_t>(spec.nchannels); ++i) {
            std::string name =
                i < spec.channelnames.size() ? spec.channelnames[i] : "channel" + std::to_string(i);
            if (static_cast<int>(i) == spec.alpha_channel) name = "A";
            channels.push_back({std::move(name), {}, TypeOf(spec.format)});
        }
        fileChannels = channels;
        description.layers = SortIntoLayers(std::move(channels), 0, {});
    }

    int IndexOf(const std::string& name) const {
        const auto channel = std::find_if(fileChannels.begin(), fileChannels.end(),
                                          [&](const Channel& each) { return each.name == name; });
        return name.empty() || channel == fileChannels.end()
                   ? -1
                   : static_cast<int>(channel - fileChannels.begin());
    }

    void CheckSize() const {
        if (spec.width < 1 || spec.height < 1) {
            throw InputError(description.path + ": the picture is " + std::to_string(spec.width) +
                             "x" + std::to_string(spec.height) + " pixels; there is nothing in it");
        }
        if (spec.width > largestSide || spec.height > largestSide) {
            throw InputError(description.path + ": the picture is " + std::to_string(spec.width) +
                             "x" + std::to_string(spec.height) +
                             " pixels, and a document holds at most " +
                             std::to_string(largestSide) + " a side; render it smaller");
        }
    }

    Picture ReadBeauty(const Beauty& beauty) {
        CheckSize();
        const Outputs outputs{{{IndexOf(beauty.red), true},
                               {IndexOf(beauty.green), true},
                               {IndexOf(beauty.blue), true},
                               {IndexOf(beauty.alpha), false, 1.0F}}};
        Picture picture = ReadPicture(outputs, outputs[3].index);
        picture.hasAlpha = !beauty.alpha.empty();
        auto& floats = std::get<std::vector<float>>(picture.components);
        picture.notFinite = MakeFinite(floats.data(), floats.size());
        return picture;
    }

    // Up to four channels of one layer.
    Picture ReadChannels(std::span<const ChannelRef> channels) {
        const Layer& layer = description.layers[channels.front().layer];
        Outputs outputs{};
        for (std::size_t i = 0; i < channels.size(); ++i) {
            const Channel& channel = layer.channels[channels[i].channel];
            const auto component = ColorComponent(channel.suffix);
            outputs[i] = {IndexOf(channel.name), component && *component != Component::Alpha};
        }
        return ReadPicture(outputs, AlphaOf(layer));
    }

    int AlphaOf(const Layer& layer) const {
        for (const Channel& channel : layer.channels) {
            if (ColorComponent(channel.suffix) == Component::Alpha) return IndexOf(channel.name);
        }
        return -1;
    }

    // Upright.
    Picture ReadPicture(const Outputs& outputs, int alpha) {
        Picture picture;
        picture.width = spec.width;
        picture.height = spec.height;
        picture.pixelAspect = description.parts[0].pixelAspect;
        const RowDecoder decoder(curve, TypeOf(spec.format), premultiplied,
                                 static_cast<std::size_t>(spec.nchannels), outputs, alpha);
        ReadPixels(decoder, picture);
        TurnUpright(picture, orientation);
        return picture;
    }

    void HandOver(const std::vector<Picture>& pictures, const std::vector<Place>& places,
                  const RowConsumer& consumer) const {
        const Window& frame = description.parts[0].displayWindow;
        const auto width = static_cast<std::size_t>(frame.Width());
        std::vector<std::vector<float>> samples(places.size(), std::vector<float>(width));
        std::vector<ChannelRow> rows;
        rows.reserve(samples.size());
        for (const std::vector<float>& each : samples)
            rows.push_back({SampleType::Float, each.data(), 0, static_cast<int>(width)});
        const int height = static_cast<int>(frame.Height());
        for (int y = 0; y < height; ++y) {
            for (std::size_t i = 0; i < places.size(); ++i) {
                const Picture& picture = pictures[places[i].picture];
                const float* pixels = std::get<std::vector<float>>(picture.components).data() +
                                      static_cast<std::size_t>(y) * width * components +
                                      places[i].component;
                for (std::size_t x = 0; x < width; ++x)
                    samples[i][x] = pixels[x * components];
            }
            consumer(y, rows);
        }
    }

    void ReadPixels(const RowDecoder& decoder, Picture& picture) {
        const auto width = static_cast<std::size_t>(spec.width);
        const std::size_t rowBytes =
            width * static_cast<std::size_t>(spec.nchannels) * decoder.RowType().size();
        std::size_t rowsAtOnce = std::max<std::size_t>(1, blockBytes / rowBytes);
        // Whole rows of tiles: the library reads a tile again for every call that touches it.
        if (spec.tile_height > 0) {
            const auto tile = static_cast<std::size_t>(spec.tile_height);
            rowsAtOnce = (rowsAtOnce + tile - 1) / tile * tile;
        }
        rowsAtOnce = std::min(rowsAtOnce, static_cast<std::size_t>(spec.height));
        std::vector<unsigned char> block(rowBytes * rowsAtOnce);
        auto& out = picture.components.emplace<std::vector<float>>();
        // Address space only: pages are taken as rows are appended.
        out.reserve(width * static_cast<std::size_t>(spec.height) * components);
        for (int first = 0; first < spec.height;) {
            const int last = std::min(spec.height, first + static_cast<int>(rowsAtOnce));
            const bool good =
                input->read_scanlines(0, 0, spec.y + first, spec.y + last, spec.z, 0,
                                      spec.nchannels, decoder.RowType(), block.data());
            if (!good || input->has_error()) Fail();
            for (int row = first; row < last; ++row) {
                const std::size_t start = out.size();
                out.resize(start + width * components);
                decoder.Decode(block.data() + static_cast<std::size_t>(row - first) * rowBytes,
                               width, out.data() + start);
            }
            first = last;
        }
    }

    std::unique_ptr<OIIO::Filesystem::IOProxy> proxy;
    std::unique_ptr<OIIO::ImageInput> input;
    OIIO::ImageSpec spec;
    // In the file's order.
    std::vector<Channel> fileChannels;
    TransferCurve curve;
    bool premultiplied = false;
    int orientation = 1;
    Description description;
};

std::unique_ptr<RenderFile> Open(const std::string& path, const ImageFormat& format,
                                 std::unique_ptr<OIIO::Filesystem::IOProxy> memory) {
    // The program runs on one thread.
    OIIO::attribute("threads", 1);
    return Guarded(path, [&]() -> std::unique_ptr<RenderFile> {
        return std::make_unique<ImageFile>(path, format, std::move(memory));
    });
}

}  // namespace

std::unique_ptr<RenderFile> OpenImageFile(const std::string& path, const ImageFormat& format) {
    return Open(path, format, nullptr);
}

std::unique_ptr<RenderFile> OpenImageFile(const std::string& path, const ImageFormat& format,
                                          const char* bytes, std::size_t size) {
    return Open(path, format,
                std::make_unique<OIIO::Filesystem::IOMemReader>(const_cast<char*>(bytes), size));
}

}  // namespace command
