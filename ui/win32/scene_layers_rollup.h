// The rollup "Scene Layers Output": which of the scene's layers become mattes.
#pragma once

#include <notify.h>

#include "ui/scene_layer_rows.h"
#include "ui/win32/matte_list_rollup.h"

namespace ui {

class SceneLayersRollup final : public MatteListRollup {
  public:
    SceneLayersRollup() : MatteListRollup(sceneLayerList) {}

    // Nothing while the rollup is closed.
    void RefreshControls();
    void Redraw();

    void Command(int control, int code) override;
    void Tick(UINT_PTR timer) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    MSTR RowText(int row) override { return rows.Text(row); }
    int RowImage(int row) override { return rows.CheckImage(Effect(), row); }
    bool Click(const RowHit& hit, int x) override;
    RowMenu Menu() override { return SceneLayerMenu(); }
    void ChooseMenu(int item, const std::function<void()>& redraw) override;
    void RefreshSceneLayerRows();
    void DeleteRow(const ILayer* layer);

    SceneLayerRows rows;
    // The scene's layers changed: the next tick makes the rows anew.
    bool layersDirty = false;
};

}  // namespace ui
