// Names of files that go with the frames of a sequence, numbered as the host numbers its own.
#pragma once

#include <maxtypes.h>
#include <strclass.h>

namespace effect {

// False, with `name` as it was, for a name that is none.
bool MakeAbsolute(MSTR& name);

// Puts the number of the frame at `t` into `name` when more than one frame is rendered. False, with
// `name` as it was, when there is no room for it.
bool AddFrameNumber(MSTR& name, TimeValue t);

}  // namespace effect
