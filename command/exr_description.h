// What an OpenEXR file says of itself.
#pragma once

#include <Imath/ImathBox.h>
#include <OpenEXR/ImfForward.h>
#include <OpenEXR/ImfPixelType.h>

#include <string>

#include "command/render_file.h"

namespace command {

Window WindowOf(const Imath::Box2i& box);
SampleType SampleTypeOf(Imf::PixelType type);

// Parts, channels sorted into layers, attributes, and warnings of what is missing or odd.
Description DescribeExr(const std::string& path, Imf::MultiPartInputFile& file);

}  // namespace command
