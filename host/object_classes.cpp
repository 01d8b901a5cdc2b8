#include "host/object_classes.h"

#include <cstdint>
#include <cstdio>

#include <ilayer.h>
#include <inode.h>
#include <sfx.h>

namespace host {

bool StandsInFiles(SClass_ID superClass) {
    return superClass == RENDER_EFFECT_CLASS_ID || superClass == REF_TARGET_CLASS_ID;
}

// Descriptors give objects as pointers without a type: the super class tells what they are, and one
// of another super class is no target at all.
ReferenceTarget* MakeToLoad(ClassDesc& desc) {
    switch (desc.SuperClassID()) {
        case RENDER_EFFECT_CLASS_ID:
            return static_cast<Effect*>(desc.Create(TRUE));
        case REF_TARGET_CLASS_ID:
            return static_cast<ReferenceTarget*>(desc.Create(TRUE));
        default:
            return nullptr;
    }
}

bool IsOfTheScene(ReferenceTarget& target) {
    return target.SuperClassID() == RENDER_ELEMENT_CLASS_ID || dynamic_cast<INode*>(&target) ||
           dynamic_cast<ILayer*>(&target);
}

std::string ClassText(Class_ID id) {
    char text[32];
    std::snprintf(text, sizeof text, "(0x%08x, 0x%08x)", static_cast<std::uint32_t>(id.PartA()),
                  static_cast<std::uint32_t>(id.PartB()));
    return text;
}

}  // namespace host
