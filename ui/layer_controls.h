// The pane that shows the settings of the layer that is selected in the list of render elements,
// with the arrows beside the list: what its controls show, and what the user changes with them.
#pragma once

#include <strclass.h>

#include <optional>
#include <vector>

namespace effect {
class PSDOutput;
}

namespace ui {

struct LayerControl {
    int id;
    bool enabled = false;
    bool shown = true;
    // Of check boxes and radios.
    std::optional<bool> checked{};
};

struct LayerControls {
    // Each control once.
    std::vector<LayerControl> controls;
    // Of the field for the element's name.
    MSTR name;
    // The mode that the combo shows; -1 for none.
    int blendingMode = -1;
};

// With `row` of the list of render elements selected (-1 for none) out of `rows`.
LayerControls UpdateLayerControls(const effect::PSDOutput& effect, int row, int rows);

// What the combo shows of that row.
int BlendModeOfRow(const effect::PSDOutput& effect, int row);

// What the user does. Each does nothing, and answers false, for a row without a layer.

// A click on a check box, which is `checked` from now on, or on a radio. False for other controls.
bool ClickLayerControl(const effect::PSDOutput& effect, int row, int control, bool checked);
// Item data of the combo's selection; below 0 without one, which changes nothing.
bool ChooseBlendMode(const effect::PSDOutput& effect, int row, int mode);
// Null, and the name that the element has, change nothing.
bool RenameElement(const effect::PSDOutput& effect, int row, const MCHAR* name);
// From the field, of which the first 255 units are taken. Whoever leaves the field without typing
// doesn't touch the scene, however long the name is.
bool TakeTypedElementName(const effect::PSDOutput& effect, int row, const MSTR& typed);

}  // namespace ui
