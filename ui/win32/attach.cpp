#include "ui/win32/attach.h"

#include "plugin/class_descriptors.h"
#include "plugin/overwrite_question.h"
#include "plugin/parameters.h"
#include "ui/win32/overwrite_dialog.h"
#include "ui/win32/parameter_map_procedure.h"

namespace ui {

void AttachPanel() {
    auto& effectClass = static_cast<ClassDesc2&>(*plugin::ClassDescriptors().front());
    ParamBlockDesc2* block = effectClass.GetParamBlockDesc(0);
    for (const parameters::Rollup& each : parameters::rollups)
        block->SetUserDlgProc(each.map, &DialogProcedure());
    plugin::UseOverwriteDialog(ShowOverwriteDialog);
}

}  // namespace ui
