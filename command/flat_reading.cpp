#include "command/flat_reading.h"

#include <algorithm>
#include <utility>

namespace command {

FlatReading::FlatReading(RenderFile& renderFile, std::size_t part)
    : file(renderFile), framePart(part) {
    const Window& frame = file.GetDescription().parts[framePart].displayWindow;
    width = static_cast<std::size_t>(frame.Width());
    height = static_cast<std::size_t>(frame.Height());
    black.resize(width);
    blackHalfs.resize(width);
}

const Channel& FlatReading::ChannelOf(const ChannelRef& channel) const {
    return file.GetDescription().layers[channel.layer].channels[channel.channel];
}

std::size_t FlatReading::AddImage(const PassChannels& channels, bool opaqueWithoutAlpha) {
    std::vector<std::size_t> places;
    std::vector<SampleType> types;
    const auto add = [&](const ChannelRef& channel) {
        places.push_back(requests.Add(channel));
        types.push_back(ChannelOf(channel).type);
    };
    // The same channel three times is grey.
    const bool grey = channels.green == channels.red && channels.blue == channels.red;
    if (grey) {
        add(*channels.red);
    } else {
        // Up to the last that is there; what is missing before it is black.
        const std::array colors{channels.red, channels.green, channels.blue};
        const auto last = std::find_if(colors.rbegin(), colors.rend(),
                                       [](const auto& each) { return each.has_value(); });
        std::for_each(colors.begin(), last.base(), [&](const auto& each) {
            if (each) return add(*each);
            places.push_back(missing);
            types.push_back(SampleType::Half);
        });
    }
    if (channels.alpha) add(*channels.alpha);
    bool madeAlpha = false;
    if (opaqueWithoutAlpha && !channels.alpha) {
        const std::size_t part = file.GetDescription().layers[channels.red->layer].part;
        const Part& pixels = file.GetDescription().parts[part];
        madeAlpha = !pixels.dataWindow.Contains(pixels.displayWindow);
        // Of the colours' own type, so that halfs stay halfs.
        if (madeAlpha) types.push_back(types.front());
    }
    images.push_back({ImageBuilder(static_cast<int>(width), static_cast<int>(height), types,
                                   channels.alpha || madeAlpha),
                      std::move(places), madeAlpha});
    return images.size() - 1;
}

std::vector<FlatReading::RankPlaces> FlatReading::Request(std::span<const CryptomatteRank> ranks) {
    std::vector<RankPlaces> places;
    places.reserve(ranks.size());
    for (const CryptomatteRank& rank : ranks)
        places.push_back({requests.Add(rank.id), requests.Add(rank.coverage)});
    return places;
}

std::optional<FlatReading::Value> FlatReading::Request(const std::optional<ChannelRef>& channel) {
    if (!channel) return std::nullopt;
    return Value{requests.Add(*channel)};
}

void FlatReading::MakeFragments(const FragmentSources& sources, FragmentBuilder& builder,
                                NumberSet* numbersOfObjects, NumberSet* numbersOfMaterials) {
    fragments = &builder;
    objectNumbers = numbersOfObjects;
    materialNumbers = numbersOfMaterials;
    objects = Request(sources.objects);
    materials = Request(sources.materials);
    objectID = Request(sources.objectID);
    materialID = Request(sources.materialID);
    depth = Request(sources.depth);
    camera = sources.camera;
    for (std::size_t i = 0; sources.normal && i < normal.size(); ++i)
        normal[i] = Request((*sources.normal)[i]);
    if (!sources.picture) return;
    // Grey stands in all colours; a missing third colour is 0, which a repeated one isn't.
    const Image& image = images[*sources.picture];
    const bool hasAlpha = image.builder.HasAlpha() && !image.madeAlpha;
    const std::size_t colors = image.places.size() - (hasAlpha ? 1 : 0);
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t place = colors == 1 ? 0 : i;
        if (place < colors && image.places[place] != missing) color[i] = Value{image.places[place]};
    }
    if (hasAlpha) color[3] = Value{image.places.back()};
}

void FlatReading::Read() {
    file.ReadRows(framePart, requests.Channels(), [this](int /*y*/, Rows rows) {
        for (Image& image : images)
            AddRow(image, rows);
        if (fragments) AddFragments(rows);
    });
}

host::Owned<host::ImageBitmap> FlatReading::TakeImage(std::size_t number, float pixelAspect) {
    return images[number].builder.Finish(pixelAspect);
}

std::span<const float> FlatReading::Opaque(const ChannelRow& pixels) {
    opaque.assign(width, 0.0F);
    std::fill_n(opaque.begin() + pixels.first, pixels.count, 1.0F);
    return opaque;
}

ChannelRow FlatReading::MadeAlpha(const ChannelRow& pixels) {
    constexpr std::uint16_t halfOne = 0x3c00;
    if (pixels.type == SampleType::Half) {
        opaqueHalfs.assign(width, 0);
        std::fill_n(opaqueHalfs.begin() + pixels.first, pixels.count, halfOne);
        return {SampleType::Half, opaqueHalfs.data(), pixels.first, pixels.count};
    }
    return {SampleType::Float, Opaque(pixels).data(), pixels.first, pixels.count};
}

void FlatReading::AddRow(Image& image, Rows rows) {
    ofImage.clear();
    for (const std::size_t place : image.places) {
        ofImage.push_back(place == missing ? ChannelRow{SampleType::Half, blackHalfs.data(), 0, 0}
                                           : rows[place]);
    }
    if (image.madeAlpha) ofImage.push_back(MadeAlpha(ofImage.front()));
    image.builder.AddRow(ofImage);
}

void FlatReading::ReadRanks(std::vector<RankPlaces>& places, Rows rows,
                            std::vector<RankRow>& ranks) const {
    ranks.clear();
    for (RankPlaces& place : places) {
        ranks.push_back({RowValues::AsBits(rows[place.id], width),
                         place.values.AsFloats(rows[place.coverage], width)});
    }
}

std::span<const float> FlatReading::Floats(Value& value, Rows rows) const {
    return value.values.AsFloats(rows[value.place], width);
}

void FlatReading::ReadNormals(Rows rows, FragmentRow& row) {
    if (!normal[0]) return;
    for (std::size_t i = 0; i < normal.size(); ++i)
        row.normal[i] = Floats(*normal[i], rows);
    if (!camera) return;
    for (std::size_t i = 0; i < normal.size(); ++i) {
        turned[i].assign(row.normal[i].begin(), row.normal[i].end());
        row.normal[i] = turned[i];
    }
    camera->Turn(turned[0], turned[1], turned[2]);
}

void FlatReading::ReadColors(Rows rows, FragmentRow& row) {
    if (!color[0]) return;
    for (std::size_t i = 0; i < 3; ++i)
        row.color[i] = color[i] ? Floats(*color[i], rows) : std::span<const float>(black);
    row.color[3] = color[3] ? Floats(*color[3], rows) : Opaque(rows[color[0]->place]);
}

void FlatReading::AddFragments(Rows rows) {
    ReadRanks(objects, rows, objectRows);
    ReadRanks(materials, rows, materialRows);
    FragmentRow row{.objects = objectRows, .materials = materialRows};
    if (objectID) {
        row.objectIDs = objectID->values.AsNumbers(rows[objectID->place], width);
        if (objectNumbers) objectNumbers->AddRow(row.objectIDs);
    }
    if (materialID) {
        row.materialIDs = materialID->values.AsNumbers(rows[materialID->place], width);
        if (materialNumbers) materialNumbers->AddRow(row.materialIDs);
    }
    if (depth) row.depth = Floats(*depth, rows);
    ReadNormals(rows, row);
    ReadColors(rows, row);
    fragments->AppendRow(row);
}

}  // namespace command
