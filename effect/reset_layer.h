// The settings that a render element's layer starts with.
#pragma once

namespace effect {

class PSDOutput;
class PSDOutputLayer;

// The defaults of the element's class, over them the user's own for the class, and a blend mode
// that the effect's document has. Without an element only the blend mode changes.
void ResetLayer(PSDOutput& effect, PSDOutputLayer& layer);

}  // namespace effect
