// The list of scene layers: which of them go into the document.
#pragma once

#include <ref.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "ui/menu_item.h"

class ILayer;

namespace effect {
class PSDOutput;
}

namespace ui {

// The rows, each told by its parameter, a number that counts from 0 in the order of the rows. Text
// and check box are the layer's own at the moment; of a layer that was destroyed the row is empty
// until it is deleted.
class SceneLayerRows final : public ReferenceMaker {
  public:
    SceneLayerRows() = default;
    ~SceneLayerRows() override { Clear(); }
    // One that isn't on the heap.
    void DeleteThis() override {}

    // One row a layer of the scene, parents before their children, siblings by their names as
    // people count.
    void Refresh();
    void Clear();
    int Count() const { return static_cast<int>(rows_.size()); }

    // Null for a parameter out of range.
    ILayer* Layer(int parameter) const;
    // The name behind a prefix of blanks for each layer that it is in.
    MSTR Text(int parameter) const;
    // State image of the check box.
    int CheckImage(const effect::PSDOutput& effect, int parameter) const;

    // The layer is no longer in the scene. The parameter of its row, which is to be deleted, or -1;
    // parameters above it fall by one.
    int Delete(const ILayer* layer);

    // A click on a row's check box, which the user can undo; then the open panel's list is drawn
    // anew. False for a row without a layer.
    bool Toggle(const effect::PSDOutput& effect, int parameter) const;

    // A layer of the rows changed, as when it was renamed. May be empty; throws nothing.
    std::function<void()> onChange;

    int NumRefs() override { return Count(); }
    RefTargetHandle GetReference(int which) override;
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage message,
                               BOOL) override {
        if (message == REFMSG_CHANGE && onChange) onChange();
        return REF_SUCCEED;
    }

  private:
    void SetReference(int which, RefTargetHandle target) override;

    struct Row {
        ILayer* layer = nullptr;
        // Layers that it is in.
        int depth = 0;
    };
    std::vector<Row> rows_;
};

// The context menu of all rows: enableAllItem and disableAllItem.
RowMenu SceneLayerMenu();
// Switches all layers of the scene, as one step that the user can undo; any other id does nothing.
// `redraw` is called after each layer that changes.
void ChooseSceneLayerMenu(const effect::PSDOutput& effect, int item,
                          const std::function<void()>& redraw);

}  // namespace ui
