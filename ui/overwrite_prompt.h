// The dialog that asks before a file is replaced: its width, and what its buttons mean.
#pragma once

#include "effect/library_services.h"

namespace ui {

// Pixels. The dialog, the text in it, and where its two buttons begin.
struct OverwriteWidths {
    int dialog = 0;
    int text = 0;
    int yesLeft = 0;
    int noLeft = 0;

    friend bool operator==(const OverwriteWidths&, const OverwriteWidths&) = default;
};

// Grown so that a line of `lineWidth` pixels fits into the text; the buttons stay in the middle.
// Never smaller.
constexpr OverwriteWidths GrownToFit(OverwriteWidths widths, int lineWidth) {
    const int growth = lineWidth > widths.text ? lineWidth - widths.text : 0;
    return {.dialog = widths.dialog + growth,
            .text = widths.text + growth,
            .yesLeft = widths.yesLeft + growth / 2,
            .noLeft = widths.noLeft + growth / 2};
}

// Of the text that the dialog shows, the part whose width counts: what stands behind the last line
// break.
MSTR PathLine(const MSTR& text);

// The same text with that part replaced.
MSTR WithPathLine(const MSTR& text, const MSTR& line);

// `button` is the number of the one that closed the dialog. The tick counts with Yes alone.
effect::OverwriteAnswer AnswerOf(int button, bool ticked);

}  // namespace ui
