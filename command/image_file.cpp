#include "command/image_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "command/failure.h"
#include "command/finite.h"
#include "command/image_decoder.h"
#include "command/layer_names.h"
#include "command/library_errors.h"
#include "command/number_text.h"
#include "command/orientation.h"
#include "command/pixel_aspect.h"
#include "command/transfer_curve.h"

namespace command {
namespace {

// Bytes of rows as the file has them that are held at a time.
constexpr std::size_t blockBytes = std::size_t{1} << 20;

bool IsForDisplay(SampleType type) {
    return type == SampleType::Unsigned8 || type == SampleType::Unsigned16;
}

// What the file says of its curve, else what its kind of values is taken for.
TransferCurve CurveOf(const ImageTraits& image) {
    if (image.curve) return *image.curve;
    return {IsForDisplay(image.type) ? TransferCurve::Kind::SRGB : TransferCurve::Kind::Linear};
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
using Outputs = std::array<Output, rgbaComponents>;

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

    // Of a value in the rows that are decoded.
    std::size_t ValueBytes() const {
        if (type == SampleType::Unsigned8) return sizeof(std::uint8_t);
        return type == SampleType::Unsigned16 ? sizeof(std::uint16_t) : sizeof(float);
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
        for (std::size_t x = 0; x < pixels; ++x, row += channels, out += rgbaComponents) {
            const float opacity =
                alpha < 0 ? 1.0F
                          : static_cast<float>(row[static_cast<std::size_t>(alpha)]) / largest;
            for (std::size_t i = 0; i < rgbaComponents; ++i) {
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
    ImageFile(const std::string& path, const ImageFormat& format,
              std::unique_ptr<ImageDecoder> openDecoder)
        : decoder(std::move(openDecoder)), image(decoder->GetTraits()), curve(CurveOf(image)) {
        description.path = path;
        description.format = format.title;
        DescribePart();
        DescribeChannels();
        if (image.hasMorePictures) {
            description.warnings.emplace_back(
                "the file holds more than one picture; the first is read");
        }
    }

    const Description& GetDescription() const override { return description; }

    Picture Read(const Beauty& beauty) override {
        return Guarded(description.path, [&] { return ReadBeauty(beauty); });
    }

    // Up to four of a layer as a picture of their own: few of these files have more channels.
    void ReadRows(std::size_t, std::span<const ChannelRef> channels,
                  const RowConsumer& consumer) override {
        std::vector<Picture> pictures;
        std::vector<Place> places;
        Guarded(description.path, [&] {
            CheckSize();
            for (std::size_t i = 0; i < channels.size();) {
                std::size_t count = 1;
                while (count < rgbaComponents && i + count < channels.size() &&
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

    void DescribePart() {
        Part part;
        part.storage = image.storage;
        part.compression = image.compression;
        part.dataWindow = {0, 0, image.width - 1, image.height - 1};
        part.pixelAspect = SoundAspect(image.pixelAspect);
        part.attributes.push_back({"transfer curve", "string", CurveName(curve)});
        if (image.alpha >= 0) {
            const char* kind = image.premultiplied ? "premultiplied" : "straight";
            part.attributes.push_back({"alpha", "string", std::string(kind)});
        }
        if (IsQuarterTurn(image.orientation))
            std::swap(part.dataWindow.right, part.dataWindow.bottom);
        part.displayWindow = part.dataWindow;
        description.parts.push_back(std::move(part));
    }

    void DescribeChannels() {
        std::vector<Channel> channels;
        for (const std::string& name : image.channels)
            channels.push_back({name, {}, image.type});
        description.layers = SortIntoLayers(std::move(channels), 0, {});
    }

    int IndexOf(const std::string& name) const {
        const auto channel = std::find(image.channels.begin(), image.channels.end(), name);
        return name.empty() || channel == image.channels.end()
                   ? -1
                   : static_cast<int>(channel - image.channels.begin());
    }

    void CheckSize() const {
        const std::string size =
            std::to_string(image.width) + "x" + std::to_string(image.height) + " pixels";
        if (image.width < 1 || image.height < 1) {
            throw InputError(description.path + ": the picture is " + size +
                             "; there is nothing in it");
        }
        if (image.width > largestSide || image.height > largestSide) {
            throw InputError(description.path + ": the picture is " + size +
                             ", and a document holds at most " + std::to_string(largestSide) +
                             " a side; render it smaller");
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
        picture.width = image.width;
        picture.height = image.height;
        picture.pixelAspect = description.parts[0].pixelAspect;
        const RowDecoder rowDecoder(curve, image.type, image.premultiplied, image.channels.size(),
                                    outputs, alpha);
        ReadPixels(rowDecoder, picture);
        TurnUpright(picture, image.orientation);
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
                                      static_cast<std::size_t>(y) * width * rgbaComponents +
                                      places[i].component;
                for (std::size_t x = 0; x < width; ++x)
                    samples[i][x] = pixels[x * rgbaComponents];
            }
            consumer(y, rows);
        }
    }

    void ReadPixels(const RowDecoder& rowDecoder, Picture& picture) {
        const auto width = static_cast<std::size_t>(image.width);
        const auto height = static_cast<std::size_t>(image.height);
        const auto tile = static_cast<std::size_t>(image.tileHeight);
        const std::size_t rowBytes = width * image.channels.size() * rowDecoder.ValueBytes();
        std::size_t rowsAtOnce = std::max<std::size_t>(1, blockBytes / rowBytes);
        rowsAtOnce = std::min((rowsAtOnce + tile - 1) / tile * tile, height);
        std::vector<unsigned char> block(rowBytes * rowsAtOnce);
        auto& out = picture.components.emplace<std::vector<float>>();
        // Address space only: pages are taken as rows are appended.
        out.reserve(width * height * rgbaComponents);
        for (std::size_t first = 0; first < height; first += rowsAtOnce) {
            const std::size_t last = std::min(height, first + rowsAtOnce);
            decoder->ReadRows(static_cast<int>(first), static_cast<int>(last), block.data());
            for (std::size_t row = first; row < last; ++row) {
                const std::size_t start = out.size();
                out.resize(start + width * rgbaComponents);
                rowDecoder.Decode(block.data() + (row - first) * rowBytes, width,
                                  out.data() + start);
            }
        }
    }

    std::unique_ptr<ImageDecoder> decoder;
    const ImageTraits& image;
    TransferCurve curve;
    Description description;
};

}  // namespace

std::unique_ptr<RenderFile> OpenImageFile(const std::string& path, const ImageFormat& format,
                                          const char* bytes, std::size_t size) {
    return Guarded(path, [&]() -> std::unique_ptr<RenderFile> {
        return std::make_unique<ImageFile>(path, format,
                                           OpenImageDecoder(path, format, bytes, size));
    });
}

}  // namespace command
