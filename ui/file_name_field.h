// The field that shows which file a render makes: derived from the render output, or typed by the
// user.
#pragma once

#include "effect/psd_output.h"
#include "ui/shortened_path.h"

namespace ui {

struct FileNameField {
    // The user can type a name.
    bool enabled = false;
    MSTR text;
};

// A name that is derived is shown in the form in which the scene would keep it, cut to `width`
// pixels, and the effect remembers how (shortFilename). A typed one is shown as it stands.
FileNameField ShowFileName(effect::PSDOutput& effect, int width, const TextWidth& widthOf);

// Whether the format of the document can be chosen.
bool IsFileFormatEnabled(const effect::PSDOutput& effect);

// What was typed: up to 260 units become `filename`, in the form in which it is kept, and nobody is
// told. Nothing while the name is derived, nor by the empty text where no name was ever set.
void TakeTypedFileName(effect::PSDOutput& effect, const MSTR& text);

}  // namespace ui
