#include "ui/resolution_buttons.h"

#include <iparamb2.h>

#include "plugin/parameters.h"

namespace ui {

void ClickResolution(IParamBlock2& pblock, int control) {
    for (const ResolutionButton& button : resolutionButtons) {
        if (button.control == control) pblock.SetValue("resolution"_param, 0, button.resolution);
    }
}

}  // namespace ui
