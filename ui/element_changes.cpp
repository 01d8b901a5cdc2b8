#include "ui/element_changes.h"

namespace ui {

bool TellsElementChange(ReferenceTarget* target, RefMessage message) {
    const bool isChange = message == REFMSG_CHANGE || message == REFMSG_ELEMENT_PROPERTIES_CHANGED;
    return isChange && target && target->SuperClassID() == RENDER_ELEMENT_CLASS_ID;
}

}  // namespace ui
