// From the values in an image file to linear light.
#pragma once

#include <vector>

namespace command {

struct TransferCurve {
    enum class Kind {
        Linear,
        // IEC 61966-2-1.
        SRGB,
        // Value to the power of `gamma`.
        Power,
    };
    Kind kind = Kind::Linear;
    double gamma = 1.0;
};

// `gamma` above 0; 1 is linear.
constexpr TransferCurve CurveOfGamma(double gamma) {
    if (gamma == 1.0) return {};
    return {TransferCurve::Kind::Power, gamma};
}

// 0 to 1 stay there; values beyond go on along the curve, negative ones mirrored.
double Decode(const TransferCurve& curve, double value);
double Encode(const TransferCurve& curve, double value);

// Decode of i / `largest` for every i up to and including it.
std::vector<float> DecodeTable(const TransferCurve& curve, unsigned largest);

}  // namespace command
