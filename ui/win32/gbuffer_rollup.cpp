#include "ui/win32/gbuffer_rollup.h"

#include "effect/psd_output.h"
#include "plugin/parameters.h"
#include "ui/depth_controls.h"

namespace ui {

void GBufferRollup::Opened() {
    EnableNonClampedColorControl();
}

void GBufferRollup::OtherEffect() {
    EnableNonClampedColorControl();
}

void GBufferRollup::EnableNonClampedColorControl() {
    if (!IsOpen()) return;
    Map().Enable("createNonClampedColorLayer"_param,
                 ShowDepth(*Effect().pblock).nonClampedColorEnabled);
}

}  // namespace ui
