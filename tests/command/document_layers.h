// The layers of a saved document as tests look at them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/documents/section_walker.h"

namespace document_layers {

using Words = std::vector<std::string>;

inline bool IsEndOfSet(const psdfile::WalkedLayer& layer) {
    const auto kind = layer.blocks.find("lsct");
    return kind != layer.blocks.end() && kind->second.substr(0, 4) == std::string("\0\0\0\3", 4);
}

// From the top; "NAME*" is hidden.
inline Words LayersOf(const psdfile::WalkedDocument& document) {
    Words names;
    for (auto layer = document.layers.rbegin(); layer != document.layers.rend(); ++layer) {
        if (IsEndOfSet(*layer)) continue;
        names.push_back(layer->name + ((layer->flags & 2) != 0 ? "*" : ""));
    }
    return names;
}

inline const psdfile::WalkedLayer& Named(const psdfile::WalkedDocument& document,
                                         const std::string& name) {
    for (const psdfile::WalkedLayer& layer : document.layers) {
        if (layer.name == name && !IsEndOfSet(layer)) return layer;
    }
    throw std::logic_error("no layer " + name);
}

// Samples of 8 bits of a channel (-1: the alpha), whose layer begins at the frame's upper left.
inline std::vector<int> Samples(const psdfile::WalkedDocument& document, const std::string& layer,
                                int channel) {
    for (const psdfile::WalkedChannel& each : Named(document, layer).channels) {
        if (each.id != channel) continue;
        std::vector<int> samples;
        for (const char sample : each.pixels)
            samples.push_back(static_cast<unsigned char>(sample));
        return samples;
    }
    throw std::logic_error("no such channel of " + layer);
}

}  // namespace document_layers
