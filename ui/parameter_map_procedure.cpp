#include "ui/parameter_map_procedure.h"

#include <utility>

namespace ui {

RefResult PSDOutputParamMapUserDlgProc::NotifyRefChanged(const Interval&, RefTargetHandle hTarget,
                                                         PartID&, RefMessage message, BOOL) {
    const bool isChange = message == REFMSG_CHANGE || message == REFMSG_ELEMENT_PROPERTIES_CHANGED;
    if (isChange && hTarget && hTarget->SuperClassID() == RENDER_ELEMENT_CLASS_ID) {
        elementsDirty = true;
    }
    return REF_SUCCEED;
}

void PSDOutputParamMapUserDlgProc::ElementsOpened() {
    RegisterGlobalReference(this);
}

void PSDOutputParamMapUserDlgProc::ElementsClosed() {
    UnRegisterGlobalReference(this);
}

bool PSDOutputParamMapUserDlgProc::TakeElementsDirty() {
    return std::exchange(elementsDirty, false);
}

PSDOutputParamMapUserDlgProc& DialogProcedure() {
    static PSDOutputParamMapUserDlgProc procedure;
    return procedure;
}

}  // namespace ui
