#include "ui/rendered_file.h"

#include <maxapi.h>

namespace ui {

std::optional<MSTR> RenderedFile(effect::PSDOutput& effect) {
    MSTR name;
    if (!effect.ResolveOutputFileName(name, true, GetCOREInterface()->GetTime())) {
        return std::nullopt;
    }
    return name;
}

}  // namespace ui
