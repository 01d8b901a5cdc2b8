// Cryptomattes whose ids went through half floats somewhere between the renderer and the file.
#pragma once

#include <string>

#include "command/passes.h"
#include "command/render_file.h"

namespace command {

// Ids that half floats can hold say nothing any more: of such Cryptomattes of objects and of
// materials the plan forgets the ranks, and tells so among its warnings. Reads rows from the top
// until an id shows that the others are sound. Throws InputError.
void DropHalfIDs(RenderFile& file, PassPlan& plan);

}  // namespace command
