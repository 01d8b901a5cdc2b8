// Gamma, a look and a curve as adjustment layers over linear pixels.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// The host's file gamma.
void AddGammaCorrectionLayer(psdbuilder::PSDBuilder& builder);

// The colour corrections of V-Ray's frame buffer, which the host writes to a table file for it.
// 1 when the layer was added. 0, without a word, when the table can't be had or is none that a
// layer can carry; the table file is gone in any case.
int AddColorCorrectionLayer(psdbuilder::PSDBuilder& builder);

// A curve that lifts linear values, under the name that the user gave, in the current set.
// Whether the user wants one, in a document that can show it: a 32-bit one is linear.
bool HasCurvesLayer(const Frame& frame);

void AddCurvesLayer(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
