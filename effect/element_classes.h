// The one table of render element classes: what a new layer of each starts with, and where it
// stands in the sorted stack.
#pragma once

#include <plugapi.h>

#include <span>

namespace effect {

// Settings of a new layer, as the parameters of the same names; those that aren't here are off. A
// class that the table doesn't have starts with these values.
struct LayerDefaults {
    bool visible = true;
    bool transparency = true;
    bool premultiply = true;
    int blendingMode = 0;
    int outputAs = 0;
    bool groupWithPrevious = false;
    bool gammaCorrect = false;
    bool colorCorrect = false;
};

struct ElementClass {
    Class_ID id;
    LayerDefaults defaults;
};

// From the top of the layer stack to the bottom; each class once.
std::span<const ElementClass> ElementClasses();

// The class's position in the table; -1 for a class that isn't in it.
int ElementRank(const Class_ID& id);

}  // namespace effect
