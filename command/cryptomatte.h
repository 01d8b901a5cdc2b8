// The Cryptomattes of a render file: where their ids and coverages are, and what the ids are
// called.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/cryptomatte_manifest.h"
#include "command/layer_places.h"
#include "command/render_file.h"

namespace command {

enum class CryptomatteKind : std::uint8_t { Object, Material, Asset, Other };

// For the user: "object".
std::string_view NameOf(CryptomatteKind kind);

// Two channels that go together in every pixel. An id is compared by its bits, whether the channel
// is of floats or of unsigned integers; 0 is nothing. A coverage is of any type.
struct CryptomatteRank {
    ChannelRef id;
    ChannelRef coverage;
};

struct Cryptomatte {
    CryptomatteKind kind = CryptomatteKind::Other;
    // As its layers are called without their number, and without the name of a view:
    // "ViewLayer.CryptoObject".
    std::string name{};
    LayerPlace place{};
    // All of its numbered layers, in their order; the layer without a number, which is a picture to
    // look at.
    std::vector<std::size_t> layers{};
    std::optional<std::size_t> preview{};
    // In the order of the layers, which needn't be that of coverage. Empty where no mattes can come
    // of it; a warning tells why.
    std::vector<CryptomatteRank> ranks{};
    Manifest manifest{};
};

struct Cryptomattes {
    // In the order of the file's layers.
    std::vector<Cryptomatte> all{};
    // One line each, without the path of the file.
    std::vector<std::string> warnings{};
};

// Reads manifests that stand in files beside the image. Doesn't throw for what the file holds.
Cryptomattes FindCryptomattes(const Description& file, const LayerPlaces& places);

}  // namespace command
