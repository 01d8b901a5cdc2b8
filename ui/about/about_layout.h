// Where the texts of the about box stand: a column of labels, and beside each the texts of its
// group, one below the other.
#pragma once

#include <windows.h>

#include "ui/about_texts.h"

namespace about {

// Rows that follow each other under the same label are one group, which shows the label once.
bool StartsGroup(const ui::AboutText* texts, int row);

// Pixels.
struct Layout {
    // The widest of each column.
    int labelWidth = 0;
    int textWidth = 0;
    int lineHeight = 0;
    // Between the columns, and between groups.
    int gap = 0;
    int margin = 0;
};

// In the window's client area.
RECT LabelPlace(const Layout& layout, const ui::AboutText* texts, int row);
RECT TextPlace(const Layout& layout, const ui::AboutText* texts, int row);
// With the margins around all rows.
SIZE ContentSize(const Layout& layout, const ui::AboutText* texts, int count);

}  // namespace about
