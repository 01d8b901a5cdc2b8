#include "effect/element_corrections.h"

#include <iparamb2.h>

#include "plugin/parameters.h"

namespace effect {
namespace {

bool Corrects(bool toElements, int config, bool chosen) {
    return toElements &&
           (config == correctAllElements || (config == correctChosenElements && chosen));
}

}  // namespace

bool CorrectsGamma(const Frame& frame, bool chosen) {
    return Corrects(frame.colors.gammaToElements, frame.pblock.GetInt("gammaCorrectConfig"_param),
                    chosen);
}

bool CorrectsColors(const Frame& frame, bool chosen) {
    return Corrects(frame.colors.ccToElements, frame.pblock.GetInt("colorCorrectConfig"_param),
                    chosen);
}

}  // namespace effect
