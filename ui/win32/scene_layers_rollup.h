// The rollup "Scene Layers Output": which of the scene's layers become mattes.
#pragma once

#include <notify.h>

#include "ui/scene_layer_rows.h"
#include "ui/win32/rollup.h"

namespace ui {

class SceneLayersRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void RefreshControls();

    void Command(int control, int code) override;
    LRESULT Notify(NMHDR& notification) override;
    void Tick(UINT_PTR timer) override;
    void Measure(MEASUREITEMSTRUCT& item) override;
    void Draw(const DRAWITEMSTRUCT& item) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    HWND List() const;
    void RefreshSceneLayerRows();
    void DeleteRow(const ILayer* layer);

    SceneLayerRows rows;
    // The scene's layers changed: the next tick makes the rows anew.
    bool layersDirty = false;
};

}  // namespace ui
