// What the groups of mattes have in common: each identity of the scene (an ID, an object, a scene
// layer, a selection set) becomes one layer or spare channel in the style that the user chose.
#pragma once

#include <iparamb2_types.h>

#include <cstdint>
#include <functional>

#include "effect/frame.h"
#include "effect/layer_name.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

struct MatteStyle;

// What a group's settings are called.
struct MatteGroupSettings {
    ParamID ownLayerSet;
    ParamID outputAs;
    ParamID layerSetName;
    const MCHAR* defaultLayerSetName;
    // BMM_CHAN_ bits that tell the identities apart.
    DWORD channels;
};

// Makes the source of an identity's pixels: their colour of `component` 0 to 2, or with 3 their
// coverage.
using MatteSource =
    std::function<psdfile::PSDChannelImageDataSourcePtr(int component, bool premultiplied)>;
constexpr int coverageComponent = 3;

// Puts the mattes of one group into the document; its layer set, if it has one, stays open as long
// as this lives. Neither argument is kept longer.
class MatteGroup {
  public:
    MatteGroup(psdbuilder::PSDBuilder& document, const Frame& ofFrame,
               const MatteGroupSettings& settings);
    MatteGroup(const MatteGroup&) = delete;
    MatteGroup& operator=(const MatteGroup&) = delete;
    ~MatteGroup();

    // False when the frame's G-Buffer lacks a channel that the style needs: then the group adds
    // nothing, and nothing is to be added.
    bool HasItsChannels() const { return hasItsChannels; }
    // Mattes without a pixel are to be left out.
    bool LeavesOutEmpty() const { return leavesOutEmpty; }
    // As the style's sources are made.
    bool Premultiplied() const { return premultiplied; }

    void Add(const LayerName& name, const MatteSource& source);

  private:
    psdbuilder::PSDBuilder& builder;
    const Frame& frame;
    const MatteStyle& style;
    bool hasItsChannels;
    bool leavesOutEmpty;
    bool premultiplied;
    std::uint8_t flags;
    bool inLayerSet = false;
};

}  // namespace effect
