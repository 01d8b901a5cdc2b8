// What renderers call their passes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <elementclasses.h>

#include "command/render_file.h"

namespace command {

// `Any`: not told, or a name that several renderers share. `Max` is the application itself, with
// its own elements and G-Buffer channels.
enum class Renderer : std::uint8_t { Any, Cycles, VRay, Arnold, Corona, Max };

// By the file's attributes and the names of its layers.
Renderer RendererOf(const Description& file);
// As its maker writes it; empty for `Any`.
std::string_view NameOf(Renderer renderer);

// What a pass of data is measured in, where its kind doesn't tell.
enum class PassDetail : std::uint8_t {
    None,
    // A depth that the renderer mapped to a range of its own, perhaps with near and far swapped:
    // no distance.
    MappedDepth,
    WorldSpace,
    CameraSpace,
    // Turned with the ray through the pixel, so that what faces the camera is (0, 0, 1).
    ScreenSpace,
};

struct PassMeaning {
    PassKind kind = PassKind::OtherColor;
    Class_ID classID{};
    PassDetail detail = PassDetail::None;
};

// `pass` is the name without view layer and view. Names that only other renderers use count too
// where the file's own renderer has no such pass. Case doesn't matter; a number behind the name
// (of a second element of the same class) doesn't either.
std::optional<PassMeaning> FindPass(Renderer renderer, std::string_view pass);

// Also the picture itself and Cryptomattes.
bool IsKnownPass(Renderer renderer, std::string_view pass);

// The whole picture under one of the names that renderers give it.
bool IsPictureName(std::string_view pass);
// Of a Cryptomatte: "CryptoObject00", "crypto_material", "VRayCryptomatte".
bool IsCryptomatteName(std::string_view pass);

// Numbers and not colours.
bool IsData(PassKind kind);
// For the user: "diffuse colour".
std::string_view NameOf(PassKind kind);

}  // namespace command
