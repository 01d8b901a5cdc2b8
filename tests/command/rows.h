// Rows of channels as ReadRows gives them, kept for tests to look at.
#pragma once

#include <Imath/half.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "command/render_file.h"

struct KeptRow {
    command::SampleType type{};
    int first = 0;
    int count = 0;
    std::vector<double> values;
};

// The frame's rows, each of all channels asked for.
using KeptRows = std::vector<std::vector<KeptRow>>;

inline command::ChannelRef FindChannel(const command::Description& file, const std::string& name,
                                       std::size_t part = 0) {
    for (std::size_t i = 0; i < file.layers.size(); ++i) {
        const command::Layer& layer = file.layers[i];
        for (std::size_t k = 0; k < layer.channels.size(); ++k) {
            if (layer.part == part && layer.channels[k].name == name) return {i, k};
        }
    }
    throw std::logic_error("no channel " + name);
}

inline double SampleAt(const command::ChannelRow& row, std::size_t x) {
    if (row.type == command::SampleType::Half) {
        Imath::half sample;
        sample.setBits(static_cast<const std::uint16_t*>(row.samples)[x]);
        return double{sample};
    }
    if (row.type == command::SampleType::Unsigned32) {
        return static_cast<const std::uint32_t*>(row.samples)[x];
    }
    return double{static_cast<const float*>(row.samples)[x]};
}

inline KeptRows KeepRows(command::RenderFile& file, std::size_t framePart,
                         const std::vector<command::ChannelRef>& channels) {
    const command::Window& frame = file.GetDescription().parts[framePart].displayWindow;
    KeptRows all;
    file.ReadRows(framePart, channels, [&](int y, std::span<const command::ChannelRow> rows) {
        if (y != static_cast<int>(all.size())) throw std::logic_error("a row out of order");
        std::vector<KeptRow>& kept = all.emplace_back();
        for (const command::ChannelRow& row : rows) {
            KeptRow& each = kept.emplace_back(KeptRow{row.type, row.first, row.count, {}});
            for (std::size_t x = 0; x < static_cast<std::size_t>(frame.Width()); ++x)
                each.values.push_back(SampleAt(row, x));
        }
    });
    return all;
}
