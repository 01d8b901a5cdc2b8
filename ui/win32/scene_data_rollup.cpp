#include "ui/win32/scene_data_rollup.h"

#include "ui/resource.h"
#include "ui/win32/rollup_controls.h"

namespace ui {

void SceneDataRollup::Opened() {
    NotifyOnEachKey(Control(IDC_HELPER_WILDCARD));
}

}  // namespace ui
