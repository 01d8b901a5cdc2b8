// What every layer of a render file becomes: the picture, a render element, part of the fragments
// or nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <plugapi.h>

#include "command/cryptomatte.h"
#include "command/pass_names.h"
#include "command/render_file.h"

namespace command {

struct PassOptions {
    // Elements of other view layers and views than the picture's.
    bool otherViews = true;
};

// Which channel is which. One value has only `red`, a vector of two red and green.
struct PassChannels {
    std::optional<ChannelRef> red{};
    std::optional<ChannelRef> green{};
    std::optional<ChannelRef> blue{};
    std::optional<ChannelRef> alpha{};

    friend bool operator==(const PassChannels&, const PassChannels&) = default;
};

struct PassElement {
    // Unlike any other's: "DiffDir"; a path ("Back/right/DiffDir") where view layer or view aren't
    // the picture's own.
    std::string name{};
    Class_ID classID{};
    PassKind kind = PassKind::OtherColor;
    // Index into Description::layers.
    std::size_t layer = 0;
    PassChannels channels{};
    // Numbers and not colours: no gamma is for it.
    bool isData = false;
    // Its light is another view's, or stands in other elements too: shown, it would count twice.
    bool isDouble = false;
};

// Whole numbers, also where the channel is of floats.
struct IDPass {
    ChannelRef channel{};
};

struct DepthPass {
    ChannelRef channel{};
    // Along the camera's axis, in the scene's units, growing away from it; where nothing is, 1e10
    // or more or infinity. Otherwise the renderer mapped it, and not even its direction is known.
    bool isDistance = true;
};

struct NormalPass {
    ChannelRef x{};
    ChannelRef y{};
    ChannelRef z{};
    // PassDetail::None where nothing tells.
    PassDetail space = PassDetail::None;
};

// How the picture's own deep part is read.
struct DeepPass {
    DeepChannels channels{};
    // Indices into DeepChannels::ids.
    std::optional<std::size_t> objectID{};
    std::optional<std::size_t> materialID{};
};

struct PassPlan {
    Renderer renderer = Renderer::Any;
    Beauty beauty{};
    // The picture's own view layer and view; the pass is its name there.
    LayerPlace beautyPlace{};
    // In the order of the file's layers.
    std::vector<PassElement> elements{};
    std::vector<Cryptomatte> cryptomattes{};

    // All that follows is of the picture's own view layer and view. Indices into `cryptomattes` of
    // such as have ranks.
    std::optional<std::size_t> objectMatte{};
    std::optional<std::size_t> materialMatte{};
    std::optional<IDPass> objectID{};
    std::optional<IDPass> materialID{};
    std::optional<DepthPass> depth{};
    std::optional<NormalPass> normals{};
    // Set where the picture is deep; then nothing flat of it is above.
    std::optional<DeepPass> deep{};
    // The fragments have a depth in the scene's units.
    bool HasDistances() const { return deep || (depth && depth->isDistance); }

    // One for each of the file's layers, for the user: "render element \"DiffDir\" (...)".
    std::vector<std::string> becomes{};
    // One line each, without the path of the file.
    std::vector<std::string> warnings{};
    // The same for layers whose names say nothing; they become elements nevertheless.
    std::vector<std::string> unknown{};
};

// `beauty` is of this description. Reads manifests beside the file, and no pixels.
PassPlan PlanPasses(const Description& file, const Beauty& beauty, const PassOptions& options = {});

}  // namespace command
