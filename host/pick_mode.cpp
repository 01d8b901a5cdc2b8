#include "host/pick_mode.h"

#include <utility>

#include "host/core_interface.h"

namespace host {

void PickMode::Set(PickModeCallback* callback) {
    if (callback == callback_) return;
    PickModeCallback* left = std::exchange(callback_, callback);
    hit_ = nullptr;
    if (left) left->ExitMode(&TheCoreInterface());
    if (callback) callback->EnterMode(&TheCoreInterface());
}

INode* PickMode::Find(HWND view, IPoint2 point, PickNodeCallback* filter) {
    hit_ = nodeAt ? nodeAt(view, point, filter) : nullptr;
    return hit_;
}

bool PickMode::Hit(HWND view, IPoint2 point) {
    return callback_ && callback_->HitTest(&TheCoreInterface(), view, this, point, 0);
}

void PickMode::Click(HWND view, IPoint2 point) {
    if (Hit(view, point) && callback_->Pick(&TheCoreInterface(), this)) Set(nullptr);
}

}  // namespace host
