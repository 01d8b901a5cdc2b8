// Numbers for the targets of one file.
#include "host/saved_objects.h"

namespace host {

Handle Handles::Of(ReferenceTarget* target) {
    if (!target) return 0;
    if (const Handle known = Find(target)) return known;
    do {
        ++last_;
    } while (!Enter(last_, target));
    return last_;
}

Handle Handles::Find(const ReferenceTarget* target) const {
    const auto found = handles_.find(target);
    return found == handles_.end() ? 0 : found->second;
}

bool Handles::Enter(Handle handle, ReferenceTarget* target) {
    if (handle == 0 || !target || targets_.contains(handle) || handles_.contains(target)) {
        return false;
    }
    handles_.emplace(target, handle);
    targets_.emplace(handle, target);
    return true;
}

ReferenceTarget* Handles::Target(Handle handle) const {
    const auto found = targets_.find(handle);
    return found == targets_.end() ? nullptr : found->second;
}

}  // namespace host
