// OpenEXR files of luminance and chroma, which are half as wide and high.
#pragma once

#include <OpenEXR/ImfForward.h>

#include <string>

#include "command/picture_builder.h"

namespace command {

// Gives `picture`, which is of halfs, every row of the part's display window as colours, by the
// library's own conversion. The stream stands at its beginning; `layer` is empty for channels
// without a layer name. Throws what the library does.
void ReadLumaChromaRows(Imf::IStream& stream, const std::string& layer, const Part& part,
                        PictureBuilder& picture);

}  // namespace command
