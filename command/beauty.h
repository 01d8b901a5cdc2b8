// Which layer of a render file is its picture.
#pragma once

#include <string_view>

#include "command/render_file.h"

namespace command {

// `wanted` names a layer, whole or by a tail of its name that fits no other ("Combined"), first
// with regard to case and then without; empty leaves the choice to the file: colours without a
// layer name, else the layer that renderers call the beauty by, else the first layer with colours,
// else the first grey one, else the only channel; where a flat and a deep layer fit equally well,
// the flat one. Throws InputError when there is none or the name
// fits none or several.
Beauty ChooseBeauty(const Description& file, std::string_view wanted = {});

}  // namespace command
