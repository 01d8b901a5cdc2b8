// What a new layer starts with, by the class of its render element.
#pragma once

namespace effect {

class PSDOutputLayer;

// Sets all settings but the element itself. Returns 1, or 0 with nothing changed without a layer or
// an element.
int ApplyClassDefaults(PSDOutputLayer* layer);

}  // namespace effect
