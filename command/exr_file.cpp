#include "command/exr_file.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfMultiPartInputFile.h>
#include <OpenEXR/ImfThreading.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <string_view>
#include <utility>

#include "command/deep_channels.h"
#include "command/exr_deep.h"
#include "command/exr_description.h"
#include "command/exr_luma_chroma.h"
#include "command/exr_rows.h"
#include "command/exr_stream.h"
#include "command/failure.h"
#include "command/library_errors.h"
#include "command/picture_builder.h"
#include "command/pixel_aspect.h"

namespace command {
namespace {

void CheckSize(const std::string& path, const Window& window, const char* what) {
    if (window.Width() <= largestSide && window.Height() <= largestSide) return;
    throw InputError(path + ": the " + what + " is " + std::to_string(window.Width()) + "x" +
                     std::to_string(window.Height()) + " pixels, and a document holds at most " +
                     std::to_string(largestSide) + " a side; render it smaller");
}

void CheckSizes(const std::string& path, const Window& displayWindow, const Window& dataWindow) {
    CheckSize(path, displayWindow, "display window");
    CheckSize(path, dataWindow, "data window");
}

// The beauty's channels in the order red, green, blue, alpha; nothing for those it lacks.
std::array<const Channel*, rgbaComponents> ChannelsOf(const Layer& layer, const Beauty& beauty) {
    const auto find = [&](const std::string& name) -> const Channel* {
        for (const Channel& channel : layer.channels) {
            if (!name.empty() && channel.name == name) return &channel;
        }
        return nullptr;
    };
    return {find(beauty.red), find(beauty.green), find(beauty.blue), find(beauty.alpha)};
}

class ExrFile : public RenderFile {
  public:
    ExrFile(const std::string& path, ExrStream openStream)
        : stream(std::move(openStream)),
          file(*stream.stream, 0),
          description(DescribeExr(path, file)) {}

    const Description& GetDescription() const override { return description; }

    Picture Read(const Beauty& beauty) override {
        return Guarded(description.path, [&] { return ReadBeauty(beauty); });
    }

    void ReadRows(std::size_t framePart, std::span<const ChannelRef> channels,
                  const RowConsumer& consumer) override {
        const Window& frame = FrameOf(framePart);
        for (const ChannelRef& each : channels)
            CheckFlat(each);
        std::vector<FlatPart> parts;
        std::vector<RowPlace> places;
        for (const ChannelRef& each : channels)
            places.push_back(PlaceOf(each, parts));
        Guarded(description.path, [&] {
            for (FlatPart& part : parts)
                part.rows = std::make_unique<ExrRows>(file, part.index, frame, part.names);
        });
        std::vector<ChannelRow> rows(channels.size());
        const int height = static_cast<int>(frame.Height());
        for (int y = 0; y < height; ++y) {
            Guarded(description.path, [&] {
                for (const FlatPart& part : parts)
                    part.rows->Load(y);
            });
            for (std::size_t i = 0; i < rows.size(); ++i)
                rows[i] = parts[places[i].part].rows->Row(places[i].row);
            consumer(y, rows);
        }
    }

    void ReadDeepRows(std::size_t framePart, const DeepChannels& channels,
                      const DeepRowConsumer& consumer) override {
        const Window& frame = FrameOf(framePart);
        const Part& part = description.parts[channels.part];
        if (!part.deep) Fail(NameOf(part) + " is not deep; read its channels as flat ones");
        CheckPart(part);
        const auto rows = Guarded(description.path, [&] {
            return std::make_unique<ExrDeepRows>(file, description.path, stream.bytes, frame,
                                                 channels);
        });
        const int height = static_cast<int>(frame.Height());
        for (int y = 0; y < height; ++y) {
            Guarded(description.path, [&] { rows->Load(y); });
            consumer(y, rows->Row());
        }
    }

  private:
    // What is read of one part.
    struct FlatPart {
        std::size_t index = 0;
        std::vector<std::string> names;
        std::unique_ptr<ExrRows> rows;
    };
    // Where a channel's rows come from: places in the list of parts, and in its names.
    struct RowPlace {
        std::size_t part = 0;
        std::size_t row = 0;
    };

    [[noreturn]] void Fail(const std::string& fault) const {
        throw InputError(description.path + ": " + fault);
    }

    static std::string NameOf(const Part& part) {
        return part.name.empty() ? "the file" : "part \"" + part.name + "\"";
    }

    // Throws InputError when it is too large.
    const Window& FrameOf(std::size_t framePart) const {
        const Window& frame = description.parts[framePart].displayWindow;
        CheckSize(description.path, frame, "display window");
        return frame;
    }

    void CheckPart(const Part& part) const {
        CheckSize(description.path, part.dataWindow, "data window");
        if (!part.complete) {
            Fail("the file is not complete: blocks of pixels are missing; render or copy it again");
        }
    }

    void CheckFlat(const ChannelRef& ref) const {
        const Layer& layer = description.layers[ref.layer];
        const Part& part = description.parts[layer.part];
        if (part.deep) {
            Fail("layer \"" + layer.name + "\" is deep and can't be read as a flat one");
        }
        CheckPart(part);
        const Channel& channel = layer.channels[ref.channel];
        if (channel.xSampling != 1 || channel.ySampling != 1) {
            Fail("layer \"" + layer.name +
                 "\" has channels with fewer samples than pixels, which can't be read; convert "
                 "them to full size");
        }
    }

    // Adds the part and the channel to what is read unless they are there.
    RowPlace PlaceOf(const ChannelRef& ref, std::vector<FlatPart>& parts) const {
        const Layer& layer = description.layers[ref.layer];
        auto part = std::find_if(parts.begin(), parts.end(),
                                 [&](const FlatPart& each) { return each.index == layer.part; });
        if (part == parts.end()) {
            parts.push_back({layer.part, {}, nullptr});
            part = parts.end() - 1;
        }
        const std::string& name = layer.channels[ref.channel].name;
        const auto same = std::find(part->names.begin(), part->names.end(), name);
        const RowPlace place{static_cast<std::size_t>(part - parts.begin()),
                             static_cast<std::size_t>(same - part->names.begin())};
        if (same == part->names.end()) part->names.push_back(name);
        return place;
    }

    Picture ReadBeauty(const Beauty& beauty) {
        const Layer& layer = description.layers[beauty.layer];
        const Part& part = description.parts[layer.part];
        CheckSizes(description.path, part.displayWindow, part.dataWindow);
        CheckPart(part);
        Picture shape;
        shape.width = static_cast<int>(part.displayWindow.Width());
        shape.height = static_cast<int>(part.displayWindow.Height());
        shape.pixelAspect = SoundAspect(part.pixelAspect);
        // Between deep samples there may be nothing.
        shape.hasAlpha =
            part.deep || !beauty.alpha.empty() || !part.dataWindow.Contains(part.displayWindow);
        if (beauty.lumaChroma) return ReadLumaChroma(layer, std::move(shape));
        return part.deep ? ReadDeep(beauty, std::move(shape)) : ReadFlat(beauty, std::move(shape));
    }

    Picture ReadFlat(const Beauty& beauty, Picture shape) {
        const Layer& layer = description.layers[beauty.layer];
        const auto channels = ChannelsOf(layer, beauty);
        std::vector<ChannelRef> refs;
        bool halfs = true;
        for (const Channel* channel : channels) {
            if (!channel) continue;
            refs.push_back(
                {beauty.layer, static_cast<std::size_t>(channel - layer.channels.data())});
            halfs = halfs && channel->type == SampleType::Half;
        }
        PictureBuilder builder(std::move(shape), halfs);
        ReadRows(layer.part, refs, [&](int, std::span<const ChannelRow> given) {
            std::array<ChannelRow, rgbaComponents> rows{};
            auto next = given.begin();
            for (std::size_t i = 0; i < rgbaComponents; ++i) {
                if (channels[i]) rows[i] = *next++;
            }
            builder.Append(rows);
        });
        return builder.Take();
    }

    Picture ReadDeep(const Beauty& beauty, Picture shape) {
        DeepChannels channels = ChooseDeepChannels(description, beauty);
        // Samples that differ by their ids alone give the same picture merged.
        channels.ids.clear();
        const auto width = static_cast<std::size_t>(shape.width);
        std::vector<float> pixels(width * rgbaComponents);
        PictureBuilder builder(std::move(shape), false);
        ReadDeepRows(channels.part, channels, [&](int, const DeepRow& row) {
            for (std::size_t x = 0; x < width; ++x) {
                const std::array<float, rgbaComponents> pixel = Flatten(row.Pixel(x));
                std::copy(pixel.begin(), pixel.end(), pixels.data() + x * rgbaComponents);
            }
            builder.Append(pixels, 0);
        });
        return builder.Take();
    }

    Picture ReadLumaChroma(const Layer& layer, Picture shape) {
        const Part& part = description.parts[layer.part];
        if (file.parts() > 1 || part.deep) {
            Fail("layer \"" + layer.name + "\" holds luminance and chroma in " +
                 (part.deep ? "a deep part" : "one part of several") +
                 ", which can't be read; convert it to RGB");
        }
        PictureBuilder builder(std::move(shape), true);
        stream.stream->seekg(0);
        ReadLumaChromaRows(*stream.stream, layer.plain ? std::string() : layer.name, part, builder);
        return builder.Take();
    }

    ExrStream stream;
    Imf::MultiPartInputFile file;
    Description description;
};

// A file that claims more than there is fails while its tables are read. When its size is the
// fault, this says so.
void CheckHeaderSizes(const std::string& path, Imf::IStream& stream) {
    constexpr int magicAndVersionBytes = 8;
    constexpr unsigned char severalParts = 0x10;
    std::array<char, magicAndVersionBytes> start{};
    stream.seekg(0);
    stream.read(start.data(), magicAndVersionBytes);
    const bool several = (static_cast<unsigned char>(start[5]) & severalParts) != 0;
    int version = 0;
    std::memcpy(&version, start.data() + sizeof version, sizeof version);
    bool more = true;
    while (more) {
        Imf::Header header;
        header.readFrom(stream, version);
        CheckSizes(path, WindowOf(header.displayWindow()), WindowOf(header.dataWindow()));
        more = several && !header.readsNothing();
    }
}

using StreamMaker = std::function<ExrStream()>;

std::unique_ptr<RenderFile> OpenStream(const std::string& path, const StreamMaker& stream) {
    try {
        return std::make_unique<ExrFile>(path, stream());
    } catch (const std::exception&) {
        try {
            CheckHeaderSizes(path, *stream().stream);
        } catch (const InputError&) {
            throw;
        } catch (const std::exception&) {
            // Its header can't be read to the end either: the first fault is the one to tell.
        }
        throw;
    }
}

std::unique_ptr<RenderFile> Open(const std::string& path, const StreamMaker& stream) {
    // The program runs on one thread.
    Imf::setGlobalThreadCount(0);
    return Guarded(path, [&] { return OpenStream(path, stream); });
}

}  // namespace

bool IsExr(const char* bytes, std::size_t size) {
    constexpr std::string_view magic("\x76\x2f\x31\x01", 4);
    return std::string_view(bytes, size).starts_with(magic);
}

std::unique_ptr<RenderFile> OpenExrFile(const std::string& path) {
    return Open(path, [&] { return OpenExrStream(path); });
}

std::unique_ptr<RenderFile> OpenExrFile(const std::string& path, const char* bytes,
                                        std::size_t size) {
    return Open(path, [&] { return OpenExrStream(path, bytes, size); });
}

}  // namespace command
