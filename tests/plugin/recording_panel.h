// A panel that writes down what it is told to show.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "plugin/block_changes.h"

class RecordingPanel final : public plugin::EffectPanel {
  public:
    RecordingPanel() { plugin::PanelOpened(*this); }
    ~RecordingPanel() { plugin::PanelClosed(*this); }
    RecordingPanel(const RecordingPanel&) = delete;
    RecordingPanel& operator=(const RecordingPanel&) = delete;

    bool Shows(const effect::PSDOutput& effect) override {
        return !shownEffect || shownEffect == &effect;
    }
    void UpdateFileNameField() override { Record("file name"); }
    void UpdateFormatEnabling() override { Record("format"); }
    void UpdateDepthControls() override { Record("depth"); }
    void EnableNonClampedColorControl() override { Record("1061"); }
    void OfferFrameBufferChange() override { Record("frame buffer?"); }
    void RedrawRenderElements() override { Record("draw elements"); }
    void RefreshRenderElementRows() override { Record("element rows"); }
    void NoteElementChange() override { Record("element change"); }
    void UpdateLayerControls() override { Record("layer"); }
    void FillBlendingModes() override { Record("blending modes"); }
    void EnableRenderElementControls() override { Record("elements"); }
    void EnableLayerSetMaskControl() override { Record("1186"); }
    void RefreshObjectIDControls() override { Record("object IDs"); }
    void RefreshMaterialIDControls() override { Record("material IDs"); }
    void RefreshObjectControls() override { Record("objects"); }
    std::optional<MSTR> TypedIDList(const effect::PSDOutput& effect, ParamID list) override {
        return typedList ? typedList(effect, list) : std::nullopt;
    }
    void RefreshSceneLayerControls() override { Record("scene layers"); }
    void RedrawSceneLayers() override { Record("draw scene layers"); }
    void RefreshSelectionSetControls() override { Record("selection sets"); }
    void RedrawSelectionSets() override { Record("draw selection sets"); }

    std::vector<std::string> Take() { return std::exchange(shown, {}); }
    void Record(const std::string& what) {
        shown.push_back(what);
        if (onRecord) onRecord(what);
    }

    // Null for whichever it is.
    const effect::PSDOutput* shownEffect = nullptr;
    std::vector<std::string> shown;
    std::function<void(const std::string&)> onRecord;
    // Empty: no rollup with lists of IDs is visible.
    std::function<std::optional<MSTR>(const effect::PSDOutput&, ParamID)> typedList;
};
