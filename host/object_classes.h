// Which objects a scene file can hold, and how they are made and called.
#pragma once

#include <string>

#include <ref.h>

namespace host {

// Whether objects of the super class stand in a scene file: effects, and the targets that they make
// for themselves.
bool StandsInFiles(SClass_ID superClass);
// A new object, to be loaded; null when the class makes none, or for a super class that doesn't
// stand in files.
ReferenceTarget* MakeToLoad(ClassDesc& desc);

// A node, scene layer or render element: files name them by their handles alone.
bool IsOfTheScene(ReferenceTarget& target);

// "(0x70068609, 0x01d5d297)".
std::string ClassText(Class_ID id);

}  // namespace host
