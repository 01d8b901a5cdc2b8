// The layers of an element whose red, green and blue are three pictures in one.
#pragma once

#include <strclass.h>

class IRenderElement;

namespace effect {

// Completes the name of component 0, 1 or 2, `name` being the element's. A matte is named after
// what it masks. False, with `name` as it was, for a matte of nothing and for one that a lower
// component has already.
bool SplitMultiMatte(IRenderElement& element, MSTR& name, int component);

}  // namespace effect
