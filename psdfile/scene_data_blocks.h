// Scene data in a document: the transform of the render camera and of helper objects, as image
// resources under a signature of this program's own. docs/scene-data.md describes them for readers.
#pragma once

#include <array>
#include <cstdint>

#include "psdfile/image_resource_block.h"

// Position, then what the block says, three values each.
using SceneDataValues = std::array<double, 9>;

class PSDIRB_Camera : public psdfile::PSDImageResourceBlock {
  public:
    // `index` 0 is the frame, or the first field of a frame of fields; any other is the second.
    // `value` is the projection: 0 perspective, 1 parallel. Values: position, rotation, view.
    PSDIRB_Camera(int index, std::uint32_t value, const SceneDataValues& values);
};

class PSDIRB_Helper : public psdfile::PSDImageResourceBlock {
  public:
    // Beyond 255 bytes the name, null for none, is cut. `frame` is 0, or 1 for the second field;
    // blocks whose index * 2 + frame is above 1999 share one id. Values: position, scale, rotation.
    PSDIRB_Helper(const char* helperName, std::uint16_t index, std::uint32_t frame,
                  const SceneDataValues& values);
};
