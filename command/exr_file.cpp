#include "command/exr_file.h"

#include <Imath/half.h>
#include <OpenEXR/ImfBoxAttribute.h>
#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfCompressionAttribute.h>
#include <OpenEXR/ImfDoubleAttribute.h>
#include <OpenEXR/ImfFloatAttribute.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIO.h>
#include <OpenEXR/ImfInputPart.h>
#include <OpenEXR/ImfIntAttribute.h>
#include <OpenEXR/ImfMatrixAttribute.h>
#include <OpenEXR/ImfMultiPartInputFile.h>
#include <OpenEXR/ImfPartType.h>
#include <OpenEXR/ImfRgbaFile.h>
#include <OpenEXR/ImfStdIO.h>
#include <OpenEXR/ImfStringAttribute.h>
#include <OpenEXR/ImfStringVectorAttribute.h>
#include <OpenEXR/ImfThreading.h>
#include <OpenEXR/ImfTileDescriptionAttribute.h>
#include <OpenEXR/ImfVecAttribute.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "command/failure.h"
#include "command/finite.h"
#include "command/layer_names.h"
#include "command/library_errors.h"

namespace command {
namespace {

constexpr std::size_t components = 4;
constexpr std::uint16_t halfOne = 0x3c00;
// Bytes of converted scanlines that are held at a time: they stay in the processor's cache.
constexpr std::size_t blockBytes = std::size_t{1} << 20;

class MemoryStream : public Imf::IStream {
  public:
    MemoryStream(const std::string& path, const char* bytes, std::size_t count)
        : Imf::IStream(path.c_str()), data(bytes), size(count) {}

    bool read(char c[], int n) override {
        if (n < 0 || static_cast<std::size_t>(n) > size - position) {
            throw std::runtime_error("unexpected end of file");
        }
        std::memcpy(c, data + position, static_cast<std::size_t>(n));
        position += static_cast<std::size_t>(n);
        return position < size;
    }
    std::uint64_t tellg() override { return position; }
    void seekg(std::uint64_t pos) override {
        position = static_cast<std::size_t>(std::min<std::uint64_t>(pos, size));
    }

  private:
    const char* data;
    std::size_t size;
    std::size_t position = 0;
};

Window WindowOf(const Imath::Box2i& box) {
    return {box.min.x, box.min.y, box.max.x, box.max.y};
}

SampleType TypeOf(Imf::PixelType type) {
    switch (type) {
        case Imf::UINT:
            return SampleType::Unsigned32;
        case Imf::HALF:
            return SampleType::Half;
        default:
            return SampleType::Float;
    }
}

std::string CompressionName(Imf::Compression compression) {
    switch (compression) {
        case Imf::NO_COMPRESSION:
            return "none";
        case Imf::RLE_COMPRESSION:
            return "rle";
        case Imf::ZIPS_COMPRESSION:
            return "zips";
        case Imf::ZIP_COMPRESSION:
            return "zip";
        case Imf::PIZ_COMPRESSION:
            return "piz";
        case Imf::PXR24_COMPRESSION:
            return "pxr24";
        case Imf::B44_COMPRESSION:
            return "b44";
        case Imf::B44A_COMPRESSION:
            return "b44a";
        case Imf::DWAA_COMPRESSION:
            return "dwaa";
        case Imf::DWAB_COMPRESSION:
            return "dwab";
        default:
            return "unknown";
    }
}

std::string StorageName(const Imf::Header& header) {
    const std::string tiles = header.hasTileDescription()
                                  ? " " + std::to_string(header.tileDescription().xSize) + "x" +
                                        std::to_string(header.tileDescription().ySize)
                                  : "";
    if (!header.hasType()) return tiles.empty() ? "scanline" : "tiled" + tiles;
    const std::string& type = header.type();
    if (type == Imf::DEEPSCANLINE) return "deep scanline";
    if (type == Imf::DEEPTILE) return "deep tiled" + tiles;
    return type == Imf::TILEDIMAGE ? "tiled" + tiles : "scanline";
}

bool IsDeep(const Imf::Header& header) {
    return header.hasType() && Imf::isDeepData(header.type());
}

template <class Vector>
std::vector<double> Numbers(const Vector& vector) {
    std::vector<double> numbers;
    for (unsigned i = 0; i < Vector::dimensions(); ++i) {
        numbers.push_back(static_cast<double>(vector[static_cast<int>(i)]));
    }
    return numbers;
}

std::vector<double> Numbers(const Imath::Box2i& box) {
    return {double(box.min.x), double(box.min.y), double(box.max.x), double(box.max.y)};
}

template <class Matrix>
std::vector<double> MatrixNumbers(const Matrix& matrix, int side) {
    std::vector<double> numbers;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            numbers.push_back(static_cast<double>(matrix[row][column]));
        }
    }
    return numbers;
}

// The attribute's value when it is of type `Type`.
template <class Type>
const Type* ValueAs(const Imf::Attribute& attribute) {
    const auto* typed = dynamic_cast<const Imf::TypedAttribute<Type>*>(&attribute);
    return typed ? &typed->value() : nullptr;
}

AttributeValue ValueOf(const Imf::Attribute& attribute) {
    if (const auto* text = ValueAs<std::string>(attribute)) return *text;
    if (const auto* texts = ValueAs<Imf::StringVector>(attribute)) return *texts;
    if (const auto* number = ValueAs<int>(attribute)) return static_cast<double>(*number);
    if (const auto* number = ValueAs<float>(attribute)) return double{*number};
    if (const auto* number = ValueAs<double>(attribute)) return *number;
    if (const auto* vector = ValueAs<Imath::V2i>(attribute)) return Numbers(*vector);
    if (const auto* vector = ValueAs<Imath::V2f>(attribute)) return Numbers(*vector);
    if (const auto* vector = ValueAs<Imath::V3i>(attribute)) return Numbers(*vector);
    if (const auto* vector = ValueAs<Imath::V3f>(attribute)) return Numbers(*vector);
    if (const auto* box = ValueAs<Imath::Box2i>(attribute)) return Numbers(*box);
    if (const auto* matrix = ValueAs<Imath::M33f>(attribute)) return MatrixNumbers(*matrix, 3);
    if (const auto* matrix = ValueAs<Imath::M44f>(attribute)) return MatrixNumbers(*matrix, 4);
    return std::monostate{};
}

// Attributes that the description tells in another way.
bool IsToldElsewhere(const std::string& name) {
    constexpr std::string_view told[] = {
        "channels",         "compression", "dataWindow", "displayWindow", "lineOrder", "name",
        "pixelAspectRatio", "tiles",       "type",       "version",       "chunkCount"};
    return std::find(std::begin(told), std::end(told), name) != std::end(told);
}

Part DescribePart(const Imf::Header& header, bool complete) {
    Part part;
    if (header.hasName()) part.name = header.name();
    part.storage = StorageName(header);
    part.compression = CompressionName(header.compression());
    part.dataWindow = WindowOf(header.dataWindow());
    part.displayWindow = WindowOf(header.displayWindow());
    part.pixelAspect = header.pixelAspectRatio();
    part.deep = IsDeep(header);
    part.complete = complete;
    for (auto each = header.begin(); each != header.end(); ++each) {
        if (IsToldElsewhere(each.name())) continue;
        const Imf::Attribute& attribute = each.attribute();
        part.attributes.push_back({each.name(), attribute.typeName(), ValueOf(attribute)});
    }
    return part;
}

std::vector<Channel> DescribeChannels(const Imf::Header& header) {
    std::vector<Channel> channels;
    const Imf::ChannelList& list = header.channels();
    for (auto each = list.begin(); each != list.end(); ++each) {
        const Imf::Channel& channel = each.channel();
        channels.push_back(
            {each.name(), {}, TypeOf(channel.type), channel.xSampling, channel.ySampling});
    }
    return channels;
}

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

// A pixel aspect that a document can have; files exist whose ratio is 0 or not a number.
float SoundAspect(float aspect) {
    return std::isfinite(aspect) && aspect > 0.0F ? aspect : 1.0F;
}

// Takes rows of the data window and appends what of them lies in the frame.
class PictureBuilder {
  public:
    PictureBuilder(const Window& dataWindow, const Window& displayWindow)
        : data(dataWindow),
          display(displayWindow),
          left(std::max(data.left, display.left)),
          pixels(std::max<std::int64_t>(
              0, std::int64_t{std::min(data.right, display.right)} - left + 1)) {}

    // Rows of the data window that the frame needs; from above to below when it needs none.
    int FirstRow() const { return std::max(data.top, display.top); }
    int LastRow() const {
        return pixels == 0 ? FirstRow() - 1 : std::min(data.bottom, display.bottom);
    }

    template <class Value>
    void Begin(std::vector<Value>& out) const {
        const auto rowValues = static_cast<std::size_t>(display.Width()) * components;
        // Address space only: pages are taken as rows are appended.
        out.reserve(rowValues * static_cast<std::size_t>(display.Height()));
        const std::int64_t above = std::int64_t{FirstRow()} - display.top;
        if (LastRow() >= FirstRow()) out.resize(rowValues * static_cast<std::size_t>(above));
    }

    // `row` holds the data window's pixels.
    template <class Value>
    std::uint64_t Append(std::vector<Value>& out, const Value* row) const {
        const std::size_t start = out.size();
        const auto before = static_cast<std::size_t>(std::int64_t{left} - display.left);
        out.resize(start + before * components);
        const Value* first =
            row + static_cast<std::size_t>(std::int64_t{left} - data.left) * components;
        out.insert(out.end(), first, first + pixels * static_cast<std::int64_t>(components));
        const std::uint64_t changed = MakeFinite(out.data() + start + before * components,
                                                 static_cast<std::size_t>(pixels) * components);
        out.resize(start + static_cast<std::size_t>(display.Width()) * components);
        return changed;
    }

    template <class Value>
    void End(std::vector<Value>& out) const {
        out.resize(static_cast<std::size_t>(display.Width()) *
                   static_cast<std::size_t>(display.Height()) * components);
    }

  private:
    Window data;
    Window display;
    int left;
    std::int64_t pixels;
};

// The beauty's channels in the order red, green, blue, alpha; empty names for those it lacks.
std::array<std::string, components> ChannelNames(const Beauty& beauty) {
    return {beauty.red, beauty.green, beauty.blue, beauty.alpha};
}

// Reads halfs into interleaved pixels, as they stand in the file.
class HalfRows {
  public:
    using Value = std::uint16_t;

    HalfRows(Imf::InputPart& inputPart, const Beauty& beauty, const Window& dataWindow)
        : part(inputPart),
          window(dataWindow),
          width(static_cast<std::size_t>(window.Width())),
          rowsAtOnce(std::max<std::size_t>(1, blockBytes / (width * components * sizeof(Value)))),
          names(ChannelNames(beauty)),
          block(rowsAtOnce * width * components) {}

    int RowsAtOnce() const { return static_cast<int>(rowsAtOnce); }

    void Read(int first, int last) {
        Imf::FrameBuffer slices;
        const std::size_t pixelBytes = components * sizeof(Value);
        for (std::size_t i = 0; i < components; ++i) {
            if (names[i].empty() || IsRepeat(i)) continue;
            slices.insert(
                names[i],
                Imf::Slice::Make(Imf::HALF, block.data() + i, {window.left, first}, window.Width(),
                                 std::int64_t{last} - first + 1, pixelBytes, pixelBytes * width));
        }
        part.setFrameBuffer(slices);
        part.readPixels(first, last);
        const std::size_t pixels = static_cast<std::size_t>(last - first + 1) * width;
        for (std::size_t i = 0; i < components; ++i) {
            if (names[i].empty()) Fill(i, pixels);
            if (!names[i].empty() && IsRepeat(i)) CopyFirst(i, pixels);
        }
    }

    const Value* Row(int row, int first) const {
        return block.data() + static_cast<std::size_t>(row - first) * width * components;
    }

  private:
    bool IsRepeat(std::size_t i) const { return i > 0 && names[i] == names[0]; }

    void Fill(std::size_t i, std::size_t pixels) {
        const Value value = i == components - 1 ? halfOne : Value{0};
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            block[pixel * components + i] = value;
        }
    }
    void CopyFirst(std::size_t i, std::size_t pixels) {
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            block[pixel * components + i] = block[pixel * components];
        }
    }

    Imf::InputPart& part;
    Window window;
    std::size_t width;
    std::size_t rowsAtOnce;
    std::array<std::string, components> names;
    std::vector<Value> block;
};

// Reads channels of any types, each into rows of its own, and makes floats of them.
class FloatRows {
  public:
    using Value = float;

    FloatRows(Imf::InputPart& inputPart, const Beauty& beauty, const Window& dataWindow)
        : part(inputPart),
          window(dataWindow),
          width(static_cast<std::size_t>(window.Width())),
          rowsAtOnce(std::max<std::size_t>(1, blockBytes / (width * components * sizeof(Value)))),
          names(ChannelNames(beauty)),
          block(rowsAtOnce * width * components) {
        for (std::size_t i = 0; i < components; ++i) {
            if (names[i].empty()) continue;
            const auto same = std::find(names.begin(), names.begin() + i, names[i]);
            source[i] = static_cast<std::size_t>(same - names.begin());
            unsignedInts[i] = part.header().channels()[names[i]].type == Imf::UINT;
            if (source[i] == i) plane[i].resize(rowsAtOnce * width);
        }
    }

    int RowsAtOnce() const { return static_cast<int>(rowsAtOnce); }

    void Read(int first, int last) {
        Imf::FrameBuffer slices;
        for (std::size_t i = 0; i < components; ++i) {
            if (plane[i].empty()) continue;
            slices.insert(names[i], Imf::Slice::Make(unsignedInts[i] ? Imf::UINT : Imf::FLOAT,
                                                     plane[i].data(), {window.left, first},
                                                     window.Width(), std::int64_t{last} - first + 1,
                                                     sizeof(float), sizeof(float) * width));
        }
        part.setFrameBuffer(slices);
        part.readPixels(first, last);
        const std::size_t pixels = static_cast<std::size_t>(last - first + 1) * width;
        for (std::size_t i = 0; i < components; ++i)
            Interleave(i, pixels);
    }

    const Value* Row(int row, int first) const {
        return block.data() + static_cast<std::size_t>(row - first) * width * components;
    }

  private:
    void Interleave(std::size_t i, std::size_t pixels) {
        float* out = block.data() + i;
        if (names[i].empty()) {
            const float value = i == components - 1 ? 1.0F : 0.0F;
            for (std::size_t pixel = 0; pixel < pixels; ++pixel)
                out[pixel * components] = value;
            return;
        }
        const std::vector<std::uint32_t>& bits = plane[source[i]];
        if (unsignedInts[i]) {
            constexpr double largest = 4294967295.0;
            for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
                out[pixel * components] = static_cast<float>(bits[pixel] / largest);
            }
            return;
        }
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            std::memcpy(out + pixel * components, &bits[pixel], sizeof(float));
        }
    }

    Imf::InputPart& part;
    Window window;
    std::size_t width;
    std::size_t rowsAtOnce;
    std::array<std::string, components> names;
    // Which plane a component comes from: its own, or an earlier one of the same channel.
    std::array<std::size_t, components> source{};
    std::array<bool, components> unsignedInts{};
    // Bits of floats or of unsigned integers.
    std::array<std::vector<std::uint32_t>, components> plane;
    std::vector<Value> block;
};

// Reads luminance and chroma through the library's own conversion.
class LumaChromaRows {
  public:
    using Value = std::uint16_t;

    LumaChromaRows(Imf::RgbaInputFile& input, const Window& dataWindow)
        : file(input),
          window(dataWindow),
          width(static_cast<std::size_t>(window.Width())),
          rowsAtOnce(std::max<std::size_t>(1, blockBytes / (width * sizeof(Imf::Rgba)))),
          block(rowsAtOnce * width) {}

    int RowsAtOnce() const { return static_cast<int>(rowsAtOnce); }

    void Read(int first, int last) {
        // The slice's own rule: the address of pixel (0, 0), which may lie outside the block.
        const Imf::Slice origin = Imf::Slice::Make(Imf::HALF, block.data(), {window.left, first},
                                                   window.Width(), std::int64_t{last} - first + 1,
                                                   sizeof(Imf::Rgba), sizeof(Imf::Rgba) * width);
        file.setFrameBuffer(static_cast<Imf::Rgba*>(static_cast<void*>(origin.base)), 1, width);
        file.readPixels(first, last);
    }

    const Value* Row(int row, int first) {
        static_assert(sizeof(Imf::Rgba) == components * sizeof(Value));
        line.resize(width * components);
        std::memcpy(line.data(), block.data() + static_cast<std::size_t>(row - first) * width,
                    width * sizeof(Imf::Rgba));
        return line.data();
    }

  private:
    Imf::RgbaInputFile& file;
    Window window;
    std::size_t width;
    std::size_t rowsAtOnce;
    std::vector<Imf::Rgba> block;
    std::vector<Value> line;
};

template <class Rows>
void ReadRows(Rows& rows, const PictureBuilder& builder, Picture& picture) {
    auto& out = picture.components.emplace<std::vector<typename Rows::Value>>();
    builder.Begin(out);
    for (int first = builder.FirstRow(); first <= builder.LastRow();) {
        const int last = std::min(builder.LastRow(), first + rows.RowsAtOnce() - 1);
        rows.Read(first, last);
        for (int row = first; row <= last; ++row) {
            picture.notFinite += builder.Append(out, rows.Row(row, first));
        }
        first = last + 1;
    }
    builder.End(out);
}

class ExrFile : public RenderFile {
  public:
    ExrFile(const std::string& path, std::unique_ptr<Imf::IStream> openStream)
        : stream(std::move(openStream)), file(*stream, 0) {
        description.path = path;
        description.format = "OpenEXR";
        const bool several = file.parts() > 1;
        for (int i = 0; i < file.parts(); ++i) {
            const Imf::Header& header = file.header(i);
            description.parts.push_back(DescribePart(header, file.partComplete(i)));
            const Part& part = description.parts.back();
            std::vector<Layer> layers =
                SortIntoLayers(DescribeChannels(header), static_cast<std::size_t>(i),
                               several ? part.name : std::string());
            std::move(layers.begin(), layers.end(), std::back_inserter(description.layers));
            WarnOf(part);
        }
        QualifyDoubles(description.layers, description.parts);
    }

    const Description& GetDescription() const override { return description; }

    Picture Read(const Beauty& beauty) override {
        return Guarded(description.path, [&] { return ReadBeauty(beauty); });
    }

  private:
    void WarnOf(const Part& part) {
        const std::string name = part.name.empty() ? "the file" : "part \"" + part.name + "\"";
        if (part.deep) {
            description.warnings.push_back(name + " is deep; deep images are not read yet");
        }
        if (!part.complete) {
            description.warnings.push_back(name + " is not complete: blocks of pixels are missing");
        }
    }

    [[noreturn]] void Fail(const std::string& fault) const {
        throw InputError(description.path + ": " + fault);
    }

    Picture ReadBeauty(const Beauty& beauty) {
        const Layer& layer = description.layers[beauty.layer];
        const Part& part = description.parts[layer.part];
        CheckSizes(description.path, part.displayWindow, part.dataWindow);
        if (part.deep) {
            Fail("layer \"" + layer.name +
                 "\" is deep, and deep images are not read yet; render it flat");
        }
        if (!part.complete) {
            Fail("the file is not complete: blocks of pixels are missing; render or copy it again");
        }
        Picture picture;
        picture.width = static_cast<int>(part.displayWindow.Width());
        picture.height = static_cast<int>(part.displayWindow.Height());
        picture.pixelAspect = SoundAspect(part.pixelAspect);
        picture.hasAlpha = !beauty.alpha.empty() || !part.dataWindow.Contains(part.displayWindow);
        const PictureBuilder builder(part.dataWindow, part.displayWindow);
        if (beauty.lumaChroma) {
            ReadLumaChroma(layer, builder, picture);
            return picture;
        }
        CheckSampling(layer, beauty);
        Imf::InputPart inputPart(file, static_cast<int>(layer.part));
        if (IsAllHalf(layer, beauty)) {
            HalfRows rows(inputPart, beauty, part.dataWindow);
            ReadRows(rows, builder, picture);
        } else {
            FloatRows rows(inputPart, beauty, part.dataWindow);
            ReadRows(rows, builder, picture);
        }
        return picture;
    }

    void ReadLumaChroma(const Layer& layer, const PictureBuilder& builder, Picture& picture) {
        if (file.parts() > 1) {
            Fail("layer \"" + layer.name +
                 "\" holds luminance and chroma in one part of several, which can't be read; "
                 "convert it to RGB");
        }
        const std::string name = layer.plain ? std::string() : layer.name;
        stream->seekg(0);
        Imf::RgbaInputFile input(*stream, name, 0);
        LumaChromaRows rows(input, description.parts[0].dataWindow);
        ReadRows(rows, builder, picture);
    }

    // Those of the layer that the beauty uses.
    template <class Test>
    bool AllUsed(const Layer& layer, const Beauty& beauty, Test test) const {
        const auto names = ChannelNames(beauty);
        return std::all_of(layer.channels.begin(), layer.channels.end(), [&](const Channel& each) {
            return std::find(names.begin(), names.end(), each.name) == names.end() || test(each);
        });
    }

    void CheckSampling(const Layer& layer, const Beauty& beauty) const {
        const bool whole = AllUsed(layer, beauty, [](const Channel& each) {
            return each.xSampling == 1 && each.ySampling == 1;
        });
        if (!whole) {
            Fail("layer \"" + layer.name +
                 "\" has channels with fewer samples than pixels, which can't be read; convert "
                 "them to full size");
        }
    }

    bool IsAllHalf(const Layer& layer, const Beauty& beauty) const {
        return AllUsed(layer, beauty,
                       [](const Channel& each) { return each.type == SampleType::Half; });
    }

    std::unique_ptr<Imf::IStream> stream;
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

using StreamMaker = std::function<std::unique_ptr<Imf::IStream>()>;

std::unique_ptr<RenderFile> OpenStream(const std::string& path, const StreamMaker& stream) {
    try {
        return std::make_unique<ExrFile>(path, stream());
    } catch (const std::exception&) {
        try {
            CheckHeaderSizes(path, *stream());
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
    return Open(path, [&] { return std::make_unique<Imf::StdIFStream>(path.c_str()); });
}

std::unique_ptr<RenderFile> OpenExrFile(const std::string& path, const char* bytes,
                                        std::size_t size) {
    return Open(path, [&] { return std::make_unique<MemoryStream>(path, bytes, size); });
}

}  // namespace command
