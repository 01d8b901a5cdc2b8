// The host's gamma. The power is taken in double precision and then rounded, so that differences in
// the last place between mathematics libraries don't reach the result.
#include <gamma.h>

#include <cmath>

#include "host/gamma.h"

namespace host {

GammaMgr DefaultGamma() {
    GammaMgr gamma;
    gamma.enable = TRUE;
    gamma.SetFileOutGamma(2.2F);
    return gamma;
}

}  // namespace host

GammaMgr gammaMgr = host::DefaultGamma();

// A gamma that isn't above 0 changes nothing.
void GammaMgr::SetFileOutGamma(float gamma) {
    if (!(gamma > 0.0F)) {
        return;
    }
    fileOutGamma = gamma;
    const double power = 1.0 / static_cast<double>(gamma);
    for (int i = 0; i < RCOLN; ++i) {
        const double corrected = std::pow(static_cast<double>(i) / (RCOLN - 1), power);
        fileOutGammaTable[i] = static_cast<UWORD>(std::lround(65535.0 * corrected));
    }
}

float gammaCorrect(float value, float gamma) {
    if (!(value > 0.0F)) {
        return value;
    }
    return static_cast<float>(
        std::pow(static_cast<double>(value), 1.0 / static_cast<double>(gamma)));
}
