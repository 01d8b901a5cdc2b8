#include "ui/resolution_buttons.h"

#include <iparamb2.h>

#include "effect/undo_step.h"
#include "plugin/parameters.h"

namespace ui {

void ClickResolution(IParamBlock2& pblock, int control) {
    for (const ResolutionButton& button : resolutionButtons) {
        if (button.control != control) continue;
        effect::UndoStep step;
        pblock.SetValue("resolution"_param, 0, button.resolution);
        step.Accept(_M("Parameter Change"));
    }
}

}  // namespace ui
