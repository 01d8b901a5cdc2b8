// The host's gamma settings and its power curve.
#pragma once

#include "maxtypes.h"

// Entries of a gamma table: a 16-bit linear value >> 3 is the index.
constexpr int RCOLN = 8192;

class GammaMgr {
  public:
    BOOL enable = FALSE;
    // 8-bit output is dithered.
    BOOL dithTrue = FALSE;
    // Above 0. 1.0 leaves values as they are.
    float fileOutGamma = 1.0F;
    // Linear 16 bits >> 3 to 16 bits for files. The host keeps it in step with fileOutGamma when
    // that is set through SetFileOutGamma.
    UWORD fileOutGammaTable[RCOLN] = {};

    void SetFileOutGamma(float gamma);
};

extern GammaMgr gammaMgr;

// value to the power of 1 / gamma; a negative value stays as it is.
float gammaCorrect(float value, float gamma);
