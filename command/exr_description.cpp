#include "command/exr_description.h"

#include <OpenEXR/ImfBoxAttribute.h>
#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfCompressionAttribute.h>
#include <OpenEXR/ImfDoubleAttribute.h>
#include <OpenEXR/ImfFloatAttribute.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIntAttribute.h>
#include <OpenEXR/ImfMatrixAttribute.h>
#include <OpenEXR/ImfMultiPartInputFile.h>
#include <OpenEXR/ImfPartType.h>
#include <OpenEXR/ImfStringAttribute.h>
#include <OpenEXR/ImfStringVectorAttribute.h>
#include <OpenEXR/ImfTileDescriptionAttribute.h>
#include <OpenEXR/ImfVecAttribute.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "command/exr_camera.h"
#include "command/layer_names.h"

namespace command {
namespace {

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
    if (const auto* matrix = ValueAs<Imath::M44d>(attribute)) return MatrixNumbers(*matrix, 4);
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
            {each.name(), {}, SampleTypeOf(channel.type), channel.xSampling, channel.ySampling});
    }
    return channels;
}

// Parts share what they say of the scene.
void AddNew(const std::vector<std::string>& warnings, std::vector<std::string>& all) {
    for (const std::string& each : warnings) {
        if (std::find(all.begin(), all.end(), each) == all.end()) all.push_back(each);
    }
}

std::string NameOf(const Part& part) {
    return part.name.empty() ? "the file" : "part \"" + part.name + "\"";
}

}  // namespace

Window WindowOf(const Imath::Box2i& box) {
    return {box.min.x, box.min.y, box.max.x, box.max.y};
}

SampleType SampleTypeOf(Imf::PixelType type) {
    switch (type) {
        case Imf::UINT:
            return SampleType::Unsigned32;
        case Imf::HALF:
            return SampleType::Half;
        default:
            return SampleType::Float;
    }
}

Description DescribeExr(const std::string& path, Imf::MultiPartInputFile& file) {
    Description description;
    description.path = path;
    description.format = "OpenEXR";
    const bool several = file.parts() > 1;
    for (int i = 0; i < file.parts(); ++i) {
        const Imf::Header& header = file.header(i);
        description.parts.push_back(DescribePart(header, file.partComplete(i)));
        Part& part = description.parts.back();
        CameraFinding finding = FindCamera(part.attributes);
        part.camera = std::move(finding.camera);
        AddNew(finding.warnings, description.warnings);
        std::vector<Layer> layers =
            SortIntoLayers(DescribeChannels(header), static_cast<std::size_t>(i),
                           several ? part.name : std::string());
        std::move(layers.begin(), layers.end(), std::back_inserter(description.layers));
        if (!part.complete) {
            description.warnings.push_back(NameOf(part) +
                                           " is not complete: blocks of pixels are missing");
        }
    }
    QualifyDoubles(description.layers, description.parts);
    return description;
}

}  // namespace command
