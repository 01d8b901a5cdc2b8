// Where the command has the effect's classes from: the library that is linked in, unless a program
// that loads one puts it here before it runs the command.
#pragma once

#include "plugin/entry.h"

namespace command {

struct EffectLibrary {
    int (*numberClasses)() = LibNumberClasses;
    ClassDesc* (*classDesc)(int) = LibClassDesc;
};

inline EffectLibrary effectLibrary;

}  // namespace command
