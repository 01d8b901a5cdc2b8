#include "command/transfer_curve.h"

#include <cmath>

namespace command {
namespace {

double DecodeSRGB(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double EncodeSRGB(double value) {
    return value <= 0.04045 / 12.92 ? value * 12.92 : 1.055 * std::pow(value, 1.0 / 2.4) - 0.055;
}

}  // namespace

double Decode(const TransferCurve& curve, double value) {
    if (value < 0) return -Decode(curve, -value);
    switch (curve.kind) {
        case TransferCurve::Kind::SRGB:
            return DecodeSRGB(value);
        case TransferCurve::Kind::Power:
            return std::pow(value, curve.gamma);
        case TransferCurve::Kind::Linear:
            break;
    }
    return value;
}

double Encode(const TransferCurve& curve, double value) {
    if (value < 0) return -Encode(curve, -value);
    switch (curve.kind) {
        case TransferCurve::Kind::SRGB:
            return EncodeSRGB(value);
        case TransferCurve::Kind::Power:
            return std::pow(value, 1.0 / curve.gamma);
        case TransferCurve::Kind::Linear:
            break;
    }
    return value;
}

std::vector<float> DecodeTable(const TransferCurve& curve, unsigned largest) {
    std::vector<float> table(std::size_t{largest} + 1);
    for (unsigned i = 0; i <= largest; ++i) {
        table[i] = static_cast<float>(Decode(curve, i / static_cast<double>(largest)));
    }
    return table;
}

}  // namespace command
