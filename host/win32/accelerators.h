// Whether the host's keyboard commands are on: winutil.h's DisableAccelerators and
// EnableAccelerators count them off and on.
#pragma once

namespace host {

// What a message loop asks before it translates a key into a command.
bool AcceleratorsEnabled();

// Disablings that still want an enabling; 0 or more, since an enabling too many does nothing.
int AcceleratorDisablings();

// On, whatever is missing: for a host that has closed all windows in which a text could be typed.
void ResetAccelerators();

}  // namespace host
