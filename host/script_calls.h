// Calls of functions that the host's script language runs.
#pragma once

#include <optional>

#include <maxscript/maxscript.h>

namespace host {

// Knows one: vfbControl #saveglobalccpreset "PATH", which writes the look of the current V-Ray's
// frame buffer to the file; true when it was written. The case of the words doesn't count, and a
// backslash in the path is one. Nothing for other text and without a V-Ray that has a frame buffer.
std::optional<FPValue> CallScript(const MCHAR* script);

}  // namespace host
