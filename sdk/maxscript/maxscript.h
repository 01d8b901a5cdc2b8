// The host's script language.
#pragma once

#include "../iparamb2_types.h"
#include "../maxtypes.h"

// A script's value: `type` is TYPE_INT, TYPE_BOOL, TYPE_FLOAT, or TYPE_VOID for none.
struct FPValue {
    ParamType2 type = TYPE_VOID;
    union {
        int i = 0;
        int b;
        float f;
    };
};

// Runs a script. False when it fails, which with `quietErrors` shows nothing to the user; `value`,
// when given, is then as it was.
BOOL ExecuteMAXScriptScript(const MCHAR* script, BOOL quietErrors = FALSE,
                            FPValue* value = nullptr);
