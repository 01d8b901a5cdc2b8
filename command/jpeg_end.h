// Whether a JPEG is all there. Windows' decoder fills what is missing with grey and says nothing.
#pragma once

#include <string_view>

namespace command {

// The segments from the file's start lead to the mark of its end; what follows it doesn't matter.
bool ReachesJpegEnd(std::string_view bytes);

}  // namespace command
