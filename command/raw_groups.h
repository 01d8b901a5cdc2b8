// Light without the surface's colour only makes sense with the colour: what a file lacks of such a
// group changes what the rest of it becomes.
#pragma once

#include "command/passes.h"

namespace command {

// Direct and indirect light and their colour stand over one another, the colour clipped to the
// light and the direct light to the indirect. Of an incomplete group, in each view by itself: a
// colour without light becomes an albedo; direct light without indirect takes its place, at the
// bottom; light without its colour becomes a colour that nothing is known of. `becomes` follows. Of
// V-Ray's lighting and global illumination the raw forms are doubles where both finished ones are
// there.
void MendRawGroups(PassPlan& plan);

}  // namespace command
