#include "host/win32/accelerators.h"

#include <winutil.h>

namespace host {
namespace {

int disablings = 0;

}  // namespace

bool AcceleratorsEnabled() {
    return disablings == 0;
}

int AcceleratorDisablings() {
    return disablings;
}

void ResetAccelerators() {
    disablings = 0;
}

}  // namespace host

void DisableAccelerators() {
    ++host::disablings;
}

void EnableAccelerators() {
    if (host::disablings > 0) {
        --host::disablings;
    }
}
