// The question whether V-Ray's frame buffer shall have the depth that the user chose for the
// document.
#pragma once

#include "effect/psd_output.h"

namespace ui {

// What V-Ray is set to, and where the host's frame goes.
struct FrameBufferState {
    // Of the document.
    int bitDepth = 16;
    bool memoryFrameBuffer = false;
    bool force32Bits = false;
    // The render output's file.
    MSTR outputName;
};

struct FrameBufferQuestion {
    const MCHAR* text;
    // What Yes runs.
    const MCHAR* script;
};

// Null when there is nothing to ask.
const FrameBufferQuestion* FrameBufferQuestionFor(const FrameBufferState& state);

// Asks over `dialog` and does what the user says. Nothing where V-Ray doesn't render or has no
// settings, while a scene file is in hand, and when nobody is there to answer.
void OfferFrameBufferChange(const effect::PSDOutput& effect, HWND dialog);

}  // namespace ui
