#include "ui/overwrite_prompt.h"

#include <maxmsgbox.h>

#include <string>

namespace ui {

namespace {

// Units of the text in front of its last line.
std::size_t LastLine(const std::basic_string<MCHAR>& text) {
    const std::size_t lineBreak = text.rfind(_M('\n'));
    return lineBreak == text.npos ? 0 : lineBreak + 1;
}

}  // namespace

MSTR PathLine(const MSTR& text) {
    const std::basic_string<MCHAR> units = text.data();
    return MSTR(units.substr(LastLine(units)));
}

MSTR WithPathLine(const MSTR& text, const MSTR& line) {
    const std::basic_string<MCHAR> units = text.data();
    return MSTR(units.substr(0, LastLine(units))) + line;
}

effect::OverwriteAnswer AnswerOf(int button, bool ticked) {
    const bool yes = button == IDYES;
    return {.overwrite = yes, .askNoMore = yes && ticked};
}

}  // namespace ui
