#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/openimageio_decoder.h"
#include "command/quiet_stderr.h"

namespace command {
namespace {

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

// The type that rows are asked for in.
OIIO::TypeDesc RowType(SampleType type) {
    if (type == SampleType::Unsigned8) return OIIO::TypeDesc::UINT8;
    if (type == SampleType::Unsigned16) return OIIO::TypeDesc::UINT16;
    return OIIO::TypeDesc::FLOAT;
}

std::optional<TransferCurve> CurveOf(const OIIO::ImageSpec& spec) {
    const std::string space = spec.get_string_attribute("oiio:ColorSpace");
    if (EqualIgnoringCase(space, "linear")) return TransferCurve();
    if (EqualIgnoringCase(space, "sRGB")) return TransferCurve{TransferCurve::Kind::SRGB};
    double gamma = spec.get_float_attribute("oiio:Gamma", 0.0F);
    constexpr std::string_view prefix = "Gamma";
    if (gamma <= 0 && space.starts_with(prefix)) {
        std::from_chars(space.data() + prefix.size(), space.data() + space.size(), gamma);
    }
    if (std::isfinite(gamma) && gamma > 0) return CurveOfGamma(gamma);
    return std::nullopt;
}

class OpenImageIODecoder : public ImageDecoder {
  public:
    // `memory` may be null: the file is then read from disk.
    OpenImageIODecoder(const std::string& path, const ImageFormat& format,
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
        if (!input->open(path, spec, config)) Fail();
        Describe();
    }

    ~OpenImageIODecoder() override {
        const QuietStderr quiet;
        input.reset();
    }

    const ImageTraits& GetTraits() const override { return traits; }

    void ReadRows(int first, int last, void* rows) override {
        const QuietStderr quiet;
        const bool good = input->read_scanlines(0, 0, spec.y + first, spec.y + last, spec.z, 0,
                                                spec.nchannels, RowType(traits.type), rows);
        if (!good || input->has_error()) Fail();
    }

  private:
    [[noreturn]] void Fail() {
        const std::string reason = input->geterror();
        throw std::runtime_error(reason.empty() ? "no pixels" : reason);
    }

    void Describe() {
        traits.width = spec.width;
        traits.height = spec.height;
        traits.type = TypeOf(spec.format);
        for (std::size_t i = 0; i < static_cast<std::size_t>(spec.nchannels); ++i) {
            const bool isNamed = i < spec.channelnames.size();
            traits.channels.push_back(isNamed ? spec.channelnames[i]
                                              : "channel" + std::to_string(i));
        }
        traits.alpha = spec.alpha_channel;
        if (traits.alpha >= 0) traits.channels[static_cast<std::size_t>(traits.alpha)] = "A";
        traits.premultiplied = spec.get_int_attribute("oiio:UnassociatedAlpha", 0) == 0;
        traits.orientation = spec.get_int_attribute("Orientation", 1);
        traits.curve = CurveOf(spec);
        traits.pixelAspect = spec.get_float_attribute("PixelAspectRatio", 1.0F);
        if (spec.tile_width > 0) {
            traits.storage =
                "tiled " + std::to_string(spec.tile_width) + "x" + std::to_string(spec.tile_height);
        }
        if (spec.tile_height > 0) traits.tileHeight = spec.tile_height;
        traits.compression = spec.get_string_attribute("compression", "");
        traits.hasMorePictures = input->seek_subimage(1, 0);
        input->geterror();
        if (!input->seek_subimage(0, 0)) Fail();
    }

    std::unique_ptr<OIIO::Filesystem::IOProxy> proxy;
    std::unique_ptr<OIIO::ImageInput> input;
    OIIO::ImageSpec spec;
    ImageTraits traits;
};

}  // namespace

std::unique_ptr<ImageDecoder> OpenWithOpenImageIO(const std::string& path,
                                                  const ImageFormat& format, const char* bytes,
                                                  std::size_t size) {
    // The program runs on one thread.
    OIIO::attribute("threads", 1);
    std::unique_ptr<OIIO::Filesystem::IOProxy> memory;
    if (bytes) {
        memory = std::make_unique<OIIO::Filesystem::IOMemReader>(const_cast<char*>(bytes), size);
    }
    return std::make_unique<OpenImageIODecoder>(path, format, std::move(memory));
}

}  // namespace command
