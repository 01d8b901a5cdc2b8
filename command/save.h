// Render files through the effect into documents.
#pragma once

#include "command/arguments.h"
#include "command/console.h"

namespace command {

// True when every frame was saved. A frame that isn't leaves an error on the console and doesn't
// stop the others. Throws UsageError before anything is read or written.
bool Save(const SaveArguments& arguments, Console& console);

}  // namespace command
