// What the effect asks of the library that it is part of.
#pragma once

#include <ioapi.h>
#include <iparamb2_types.h>
#include <strclass.h>

#include "effect/warning_switches.h"

class IRendParams;
class SFXParamDlg;

namespace effect {

class PSDOutput;
class PSDOutputLayer;

// Of the library's string table: what a tree of tracks calls a parameter block.
constexpr int blockNameString = 34;

// What the user says to a document that would replace an existing file.
struct OverwriteAnswer {
    bool overwrite = false;
    // The user wants no further question.
    bool askNoMore = false;
};

struct LibraryServices {
    ReadWarningSwitches readWarningSwitches;
    // A text of the string table; null for one that isn't there. Valid until the next call.
    const MCHAR* (*getString)(int id);
    // Gives a layer the user's settings for its element's class. 0, and nothing done, without them.
    int (*loadLayerPreset)(PSDOutputLayer* layer);
    // What brings a loaded effect's block up to date when the whole file is in.
    PostLoadCallback* (*makePostLoadCallback)(PSDOutput& effect);
    // A parameter of the effect's block changed: controls that show it follow.
    void (*parameterChanged)(PSDOutput& effect, ParamID id);
    // Asks the user, in these words. The caller knows that somebody is there.
    OverwriteAnswer (*askOverwrite)(const MSTR& text);
    // Shows the effect's settings. Null when there is nothing to show them in.
    SFXParamDlg* (*createParamDialog)(PSDOutput& effect, IRendParams* ip);
};

}  // namespace effect
