// Images read with the system's own imaging component.
#include <windows.h>

#include <wincodec.h>

#include <Imath/half.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "command/failure.h"
#include "command/image_decoder.h"
#include "command/input_file.h"
#include "command/jpeg_end.h"

namespace command {
namespace {

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Com = std::unique_ptr<Interface, Release>;

std::string_view TextOf(HRESULT fault) {
    switch (fault) {
        case WINCODEC_ERR_BADHEADER:
        case WINCODEC_ERR_BADMETADATAHEADER:
        case WINCODEC_ERR_UNKNOWNIMAGEFORMAT:
            return "bad header";
        case WINCODEC_ERR_BADIMAGE:
        case WINCODEC_ERR_BADSTREAMDATA:
            return "bad pixels";
        case WINCODEC_ERR_STREAMREAD:
        case WINCODEC_ERR_STREAMNOTAVAILABLE:
            return "unexpected end of file";
        case WINCODEC_ERR_FRAMEMISSING:
            return "no pixels";
        default:
            return {};
    }
}

void Check(HRESULT result) {
    if (SUCCEEDED(result)) return;
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    std::string text(TextOf(result));
    if (text.empty()) {
        std::array<char, 32> number{};
        std::snprintf(number.data(), number.size(), "error 0x%08lx",
                      static_cast<unsigned long>(result));
        text = number.data();
    }
    throw std::runtime_error(text);
}

// What `call` puts into the pointer that it is given.
template <class Interface, class Call>
Com<Interface> Made(Call&& call) {
    Interface* object = nullptr;
    Check(call(&object));
    return Com<Interface>(object);
}

// The component objects of a thread need this around them.
class ComUse {
  public:
    ComUse() : result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
    ComUse(const ComUse&) = delete;
    ComUse& operator=(const ComUse&) = delete;
    // A thread that was set up in another way serves as well, and isn't ours to end.
    ~ComUse() {
        if (SUCCEEDED(result)) CoUninitialize();
    }

  private:
    HRESULT result;
};

// How pixels come out of the decoder.
struct PixelLayout {
    const GUID* format;
    // Of a value.
    SampleType type;
    int bits;
    // The values of a pixel: R, G, B, A, Y for grey, X for none, I for an index into a palette.
    std::string_view order;
    bool premultiplied = false;
};

constexpr PixelLayout layouts[] = {
    {&GUID_WICPixelFormat1bppIndexed, SampleType::Unsigned8, 1, "I"},
    {&GUID_WICPixelFormat2bppIndexed, SampleType::Unsigned8, 2, "I"},
    {&GUID_WICPixelFormat4bppIndexed, SampleType::Unsigned8, 4, "I"},
    {&GUID_WICPixelFormat8bppIndexed, SampleType::Unsigned8, 8, "I"},
    {&GUID_WICPixelFormatBlackWhite, SampleType::Unsigned8, 1, "Y"},
    {&GUID_WICPixelFormat2bppGray, SampleType::Unsigned8, 2, "Y"},
    {&GUID_WICPixelFormat4bppGray, SampleType::Unsigned8, 4, "Y"},
    {&GUID_WICPixelFormat8bppGray, SampleType::Unsigned8, 8, "Y"},
    {&GUID_WICPixelFormat16bppGray, SampleType::Unsigned16, 16, "Y"},
    {&GUID_WICPixelFormat16bppGrayHalf, SampleType::Half, 16, "Y"},
    {&GUID_WICPixelFormat32bppGrayFloat, SampleType::Float, 32, "Y"},
    {&GUID_WICPixelFormat24bppBGR, SampleType::Unsigned8, 8, "BGR"},
    {&GUID_WICPixelFormat24bppRGB, SampleType::Unsigned8, 8, "RGB"},
    {&GUID_WICPixelFormat32bppBGR, SampleType::Unsigned8, 8, "BGRX"},
    {&GUID_WICPixelFormat32bppBGRA, SampleType::Unsigned8, 8, "BGRA"},
    {&GUID_WICPixelFormat32bppPBGRA, SampleType::Unsigned8, 8, "BGRA", true},
    {&GUID_WICPixelFormat32bppRGBA, SampleType::Unsigned8, 8, "RGBA"},
    {&GUID_WICPixelFormat32bppPRGBA, SampleType::Unsigned8, 8, "RGBA", true},
    {&GUID_WICPixelFormat48bppRGB, SampleType::Unsigned16, 16, "RGB"},
    {&GUID_WICPixelFormat48bppBGR, SampleType::Unsigned16, 16, "BGR"},
    {&GUID_WICPixelFormat64bppRGB, SampleType::Unsigned16, 16, "RGBX"},
    {&GUID_WICPixelFormat64bppRGBA, SampleType::Unsigned16, 16, "RGBA"},
    {&GUID_WICPixelFormat64bppBGRA, SampleType::Unsigned16, 16, "BGRA"},
    {&GUID_WICPixelFormat64bppPRGBA, SampleType::Unsigned16, 16, "RGBA", true},
    {&GUID_WICPixelFormat64bppPBGRA, SampleType::Unsigned16, 16, "BGRA", true},
    {&GUID_WICPixelFormat48bppRGBHalf, SampleType::Half, 16, "RGB"},
    {&GUID_WICPixelFormat64bppRGBHalf, SampleType::Half, 16, "RGBX"},
    {&GUID_WICPixelFormat64bppRGBAHalf, SampleType::Half, 16, "RGBA"},
    {&GUID_WICPixelFormat96bppRGBFloat, SampleType::Float, 32, "RGB"},
    {&GUID_WICPixelFormat128bppRGBFloat, SampleType::Float, 32, "RGBX"},
    {&GUID_WICPixelFormat128bppRGBAFloat, SampleType::Float, 32, "RGBA"},
    {&GUID_WICPixelFormat128bppPRGBAFloat, SampleType::Float, 32, "RGBA", true},
};

const PixelLayout* FindLayout(const GUID& format) {
    for (const PixelLayout& layout : layouts) {
        if (IsEqualGUID(*layout.format, format)) return &layout;
    }
    return nullptr;
}

struct Container {
    std::string_view name;
    const GUID* format;
};

constexpr Container containers[] = {
    {"png", &GUID_ContainerFormatPng},
    {"tiff", &GUID_ContainerFormatTiff},
    {"jpeg", &GUID_ContainerFormatJpeg},
};

const GUID& ContainerOf(const std::string& path, const ImageFormat& format) {
    for (const Container& container : containers) {
        if (container.name == format.name) return *container.format;
    }
    throw InputError(path + ": Windows reads no " + std::string(format.title) +
                     " files; convert it to OpenEXR, PNG or TIFF");
}

int Side(UINT pixels) {
    constexpr auto most = static_cast<UINT>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(pixels, most));
}

// An unsigned number among what the file says of itself.
std::optional<unsigned> Number(IWICMetadataQueryReader& reader, const wchar_t* name) {
    PROPVARIANT value;
    PropVariantInit(&value);
    std::optional<unsigned> number;
    if (SUCCEEDED(reader.GetMetadataByName(name, &value))) {
        if (value.vt == VT_UI1) number = value.bVal;
        if (value.vt == VT_UI2) number = value.uiVal;
        if (value.vt == VT_UI4) number = static_cast<unsigned>(value.ulVal);
    }
    PropVariantClear(&value);
    return number;
}

// The gamma of a PNG is one over that of its curve, in hundred thousandths; to the hundredth, so
// that 2.2 is 2.2.
std::optional<TransferCurve> CurveOfPng(IWICMetadataQueryReader& reader) {
    if (Number(reader, L"/sRGB/RenderingIntent")) return TransferCurve{TransferCurve::Kind::SRGB};
    const auto gamma = Number(reader, L"/gAMA/ImageGamma");
    if (!gamma || *gamma == 0) return std::nullopt;
    constexpr double scale = 100000.0;
    const double curve = std::round(100.0 * scale / *gamma) / 100.0;
    return curve > 0 ? std::optional(CurveOfGamma(static_cast<float>(curve))) : std::nullopt;
}

// As TIFF numbers them.
std::string CompressionOfTiff(IWICMetadataQueryReader& reader) {
    switch (Number(reader, L"/ifd/{ushort=259}").value_or(0)) {
        case 1:
            return "none";
        case 5:
            return "lzw";
        case 7:
            return "jpeg";
        case 8:
        case 32946:
            return "zip";
        case 32773:
            return "packbits";
        default:
            return {};
    }
}

class WicDecoder : public ImageDecoder {
  public:
    WicDecoder(std::string filePath, const ImageFormat& format, std::string fileContent,
               std::string_view fileBytes)
        : path(std::move(filePath)),
          title(format.title),
          content(std::move(fileContent)),
          bytes(content.empty() ? fileBytes : content),
          isJpeg(format.name == "jpeg") {
        const GUID& container = ContainerOf(path, format);
        CheckVersion(format);
        const auto factory = Made<IWICImagingFactory>([](IWICImagingFactory** made) {
            return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                    IID_IWICImagingFactory, reinterpret_cast<void**>(made));
        });
        stream = Made<IWICStream>([&](IWICStream** made) { return factory->CreateStream(made); });
        CheckLength();
        Check(stream->InitializeFromMemory(BytesOf(bytes), static_cast<DWORD>(bytes.size())));
        decoder = Made<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
            return CheckSupport(factory->CreateDecoder(container, nullptr, made));
        });
        Check(CheckSupport(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand)));
        frame = Made<IWICBitmapFrameDecode>(
            [&](IWICBitmapFrameDecode** made) { return CheckSupport(decoder->GetFrame(0, made)); });
        Describe(*factory);
    }

    const ImageTraits& GetTraits() const override { return traits; }

    void ReadRows(int first, int last, void* rows) override {
        if (isJpeg && !ReachesJpegEnd(bytes)) throw std::runtime_error("unexpected end of file");
        const auto width = static_cast<std::size_t>(traits.width);
        const auto count = static_cast<std::size_t>(last - first);
        const std::size_t bits =
            width * static_cast<std::size_t>(layout->bits) * layout->order.size();
        const std::size_t stride = (bits + 7) / 8;
        block.resize(stride * count);
        const WICRect wanted{0, first, traits.width, last - first};
        Check(frame->CopyPixels(&wanted, static_cast<UINT>(stride), static_cast<UINT>(block.size()),
                                block.data()));
        auto* out = static_cast<unsigned char*>(rows);
        for (std::size_t row = 0; row < count; ++row)
            out = Arrange(block.data() + row * stride, out);
    }

  private:
    // The stream takes it as something to write to.
    static BYTE* BytesOf(std::string_view text) {
        return reinterpret_cast<BYTE*>(const_cast<char*>(text.data()));
    }

    [[noreturn]] void FailAsForeign() const {
        throw InputError(path + ": Windows doesn't read this kind of " + title +
                         " file; convert it to OpenEXR");
    }

    HRESULT CheckSupport(HRESULT result) const {
        if (result == WINCODEC_ERR_COMPONENTNOTFOUND || result == WINCODEC_ERR_UNSUPPORTEDVERSION ||
            result == WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT ||
            result == WINCODEC_ERR_UNSUPPORTEDOPERATION) {
            FailAsForeign();
        }
        return result;
    }

    // Of TIFF the one for more than 4 GB is another format to Windows.
    void CheckVersion(const ImageFormat& format) const {
        const bool isTiff = format.name == "tiff" && bytes.size() >= 4;
        if (isTiff &&
            (bytes.starts_with("II+") || bytes.substr(2, 2) == std::string_view("\0+", 2)))
            FailAsForeign();
    }

    void CheckLength() const {
        if (bytes.size() <= std::numeric_limits<DWORD>::max()) return;
        throw InputError(path + ": larger than the 4 GB that Windows reads of a " + title +
                         " file; convert it to OpenEXR");
    }

    void Describe(IWICImagingFactory& factory) {
        UINT width = 0;
        UINT height = 0;
        Check(frame->GetSize(&width, &height));
        traits.width = Side(width);
        traits.height = Side(height);
        WICPixelFormatGUID format;
        Check(frame->GetPixelFormat(&format));
        layout = FindLayout(format);
        if (!layout) FailAsForeign();
        traits.type = layout->type;
        traits.premultiplied = layout->premultiplied;
        if (layout->order == "I") ReadPalette(factory);
        NameChannels(layout->order == "I" ? paletteOrder : layout->order);
        double across = 0;
        double down = 0;
        if (SUCCEEDED(frame->GetResolution(&across, &down)) && across > 0 && down > 0)
            traits.pixelAspect = static_cast<float>(down / across);
        UINT pictures = 0;
        traits.hasMorePictures = SUCCEEDED(decoder->GetFrameCount(&pictures)) && pictures > 1;
        IWICMetadataQueryReader* queries = nullptr;
        if (SUCCEEDED(frame->GetMetadataQueryReader(&queries)))
            DescribeMore(*Com<IWICMetadataQueryReader>(queries));
    }

    void DescribeMore(IWICMetadataQueryReader& reader) {
        traits.curve = CurveOfPng(reader);
        auto orientation = Number(reader, L"/ifd/{ushort=274}");
        if (!orientation) orientation = Number(reader, L"/app1/ifd/{ushort=274}");
        if (orientation && *orientation <= 8) traits.orientation = static_cast<int>(*orientation);
        traits.compression = CompressionOfTiff(reader);
    }

    void ReadPalette(IWICImagingFactory& factory) {
        const auto made =
            Made<IWICPalette>([&](IWICPalette** object) { return factory.CreatePalette(object); });
        Check(frame->CopyPalette(made.get()));
        std::array<WICColor, 256> colors{};
        UINT count = 0;
        Check(made->GetColors(static_cast<UINT>(colors.size()), colors.data(), &count));
        BOOL hasAlpha = FALSE;
        Check(made->HasAlpha(&hasAlpha));
        paletteOrder = hasAlpha ? "RGBA" : "RGB";
        // An index beyond the palette is black, opaque.
        palette.fill({0, 0, 0, 255});
        for (std::size_t i = 0; i < std::min<std::size_t>(count, palette.size()); ++i) {
            const auto part = [&](int shift) {
                return static_cast<unsigned char>(colors[i] >> shift & 255U);
            };
            palette[i] = {part(16), part(8), part(0), part(24)};
        }
    }

    // Colours in the order red, green, blue, alpha, wherever they stand in a pixel.
    void NameChannels(std::string_view order) {
        for (const char letter : std::string_view("YRGBA")) {
            const std::size_t place = order.find(letter);
            if (place == std::string_view::npos) continue;
            if (letter == 'A') traits.alpha = static_cast<int>(traits.channels.size());
            traits.channels.emplace_back(1, letter);
            places.push_back(place);
        }
    }

    // A row of the decoder's pixels to one of our values; gives where the next begins.
    unsigned char* Arrange(const unsigned char* row, unsigned char* out) const {
        if (layout->order == "I") return ArrangeIndices(row, out);
        if (layout->bits < 8) return ArrangeBits(row, out);
        switch (layout->type) {
            case SampleType::Unsigned8:
                return ArrangeValues<std::uint8_t>(row, out, [](auto value) { return value; });
            case SampleType::Unsigned16:
                return ArrangeValues<std::uint16_t>(row, out, [](auto value) { return value; });
            case SampleType::Half:
                return ArrangeValues<std::uint16_t>(
                    row, out, [](auto value) { return imath_half_to_float(value); });
            default:
                return ArrangeValues<float>(row, out, [](auto value) { return value; });
        }
    }

    template <class Value, class Convert>
    unsigned char* ArrangeValues(const unsigned char* row, unsigned char* out,
                                 Convert convert) const {
        const std::size_t pixelBytes = layout->order.size() * sizeof(Value);
        for (int x = 0; x < traits.width; ++x, row += pixelBytes) {
            for (const std::size_t place : places) {
                Value value;
                std::memcpy(&value, row + place * sizeof(Value), sizeof(Value));
                const auto converted = convert(value);
                std::memcpy(out, &converted, sizeof(converted));
                out += sizeof(converted);
            }
        }
        return out;
    }

    // Of pixels smaller than a byte the first is in the highest bits.
    unsigned BitsAt(const unsigned char* row, int x) const {
        const int bits = layout->bits;
        const int at = x * bits;
        return row[at / 8] >> (8 - bits - at % 8) & ((1U << bits) - 1);
    }

    unsigned char* ArrangeBits(const unsigned char* row, unsigned char* out) const {
        const unsigned largest = (1U << layout->bits) - 1;
        for (int x = 0; x < traits.width; ++x)
            *out++ = static_cast<unsigned char>(BitsAt(row, x) * 255U / largest);
        return out;
    }

    unsigned char* ArrangeIndices(const unsigned char* row, unsigned char* out) const {
        for (int x = 0; x < traits.width; ++x) {
            const std::array<unsigned char, 4>& color = palette[BitsAt(row, x)];
            std::memcpy(out, color.data(), paletteOrder.size());
            out += paletteOrder.size();
        }
        return out;
    }

    ComUse com;
    std::string path;
    std::string title;
    // Of a file that was read from disk.
    std::string content;
    std::string_view bytes;
    bool isJpeg;
    Com<IWICStream> stream;
    Com<IWICBitmapDecoder> decoder;
    Com<IWICBitmapFrameDecode> frame;
    const PixelLayout* layout = nullptr;
    std::array<std::array<unsigned char, 4>, 256> palette{};
    std::string_view paletteOrder;
    // Of our channels, among the values of a pixel.
    std::vector<std::size_t> places;
    ImageTraits traits;
    std::vector<unsigned char> block;
};

}  // namespace

std::unique_ptr<ImageDecoder> OpenImageDecoder(const std::string& path, const ImageFormat& format,
                                               const char* bytes, std::size_t size) {
    if (bytes) {
        return std::make_unique<WicDecoder>(path, format, std::string(),
                                            std::string_view(bytes, size));
    }
    return std::make_unique<WicDecoder>(path, format, ReadWholeInput(path), std::string_view());
}

}  // namespace command
