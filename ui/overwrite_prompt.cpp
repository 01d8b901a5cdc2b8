#include "ui/overwrite_prompt.h"

#include <maxmsgbox.h>

#include <string>

namespace ui {

MSTR PathLine(const MSTR& text) {
    const std::basic_string<MCHAR> units = text.data();
    const std::size_t lineBreak = units.rfind(_M('\n'));
    return lineBreak == units.npos ? text : MSTR(units.substr(lineBreak + 1));
}

effect::OverwriteAnswer AnswerOf(int button, bool ticked) {
    const bool yes = button == IDYES;
    return {.overwrite = yes, .askNoMore = yes && ticked};
}

}  // namespace ui
