#include "ui/about/about_layout.h"

#include <cwchar>

namespace about {
namespace {

LONG TopOf(const Layout& layout, const ui::AboutText* texts, int row) {
    LONG top = layout.margin + row * layout.lineHeight;
    for (int group = 1; group <= row; ++group) {
        if (StartsGroup(texts, group)) top += layout.gap;
    }
    return top;
}

}  // namespace

bool StartsGroup(const ui::AboutText* texts, int row) {
    return row == 0 || std::wcscmp(texts[row].label, texts[row - 1].label) != 0;
}

RECT LabelPlace(const Layout& layout, const ui::AboutText* texts, int row) {
    const LONG top = TopOf(layout, texts, row);
    return {layout.margin, top, layout.margin + layout.labelWidth, top + layout.lineHeight};
}

RECT TextPlace(const Layout& layout, const ui::AboutText* texts, int row) {
    const LONG top = TopOf(layout, texts, row);
    const LONG left = layout.margin + layout.labelWidth + layout.gap;
    return {left, top, left + layout.textWidth, top + layout.lineHeight};
}

SIZE ContentSize(const Layout& layout, const ui::AboutText* texts, int count) {
    const LONG bottom =
        count > 0 ? TopOf(layout, texts, count - 1) + layout.lineHeight : layout.margin;
    return {2 * layout.margin + layout.labelWidth + layout.gap + layout.textWidth,
            bottom + layout.margin};
}

}  // namespace about
