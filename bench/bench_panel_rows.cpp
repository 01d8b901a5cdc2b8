// The panel's lists in a large scene: 500 render elements, 5,000 scene layers in a tree and 1,000
// named selection sets. Opening a list, drawing all of its rows, switching all, sorting, and what
// follows from a click. Rows a second, where it is about rows.
#include <benchmark/benchmark.h>

#include <array>

#include "bench/large_scene.h"
#include "effect/psd_output.h"
#include "effect/scene_sync.h"
#include "effect/sync_render_elements.h"
#include "host/application.h"
#include "plugin/entry.h"
#include "ui/cell_text.h"
#include "ui/element_cells.h"
#include "ui/element_row_clicks.h"
#include "ui/layer_controls.h"
#include "ui/list_views.h"
#include "ui/move_layer.h"
#include "ui/scene_layer_rows.h"
#include "ui/selection_set_rows.h"
#include "ui/sort_once.h"

namespace {

using large_scene::elements;
using large_scene::layers;
using large_scene::NumberedName;
using large_scene::sets;

// The scene, with an effect that has met it.
effect::PSDOutput& MakeScene() {
    host::ResetApplication();
    plugin::Attach();
    host::Application& app = host::App();
    for (int i = 0; i < LibNumberClasses(); ++i)
        app.classes.Add(LibClassDesc(i));
    large_scene::Fill();
    auto* effect = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    app.effects.emplace_back(effect);
    effect->pblock->SetValue("autoSort"_param, 0, FALSE);
    effect::SyncRenderElements(*effect, 0);
    app.undo.Clear();
    return *effect;
}

class PanelRows : public benchmark::Fixture {
  public:
    void SetUp(benchmark::State&) override { effect = &MakeScene(); }
    void TearDown(benchmark::State&) override { host::ResetApplication(); }

    effect::PSDOutput* effect = nullptr;
    // As the list hands it out.
    std::array<MCHAR, 260> buffer{};
};

void Count(benchmark::State& state, int rows) {
    state.SetItemsProcessed(state.iterations() * rows);
}

// Of an effect that meets the scene's elements.
BENCHMARK_DEFINE_F(PanelRows, open_elements)(benchmark::State& state) {
    for (auto unused : state) {
        state.PauseTiming();
        effect->pblock->SetCount("layersProduction"_param, 0);
        state.ResumeTiming();
        effect::SyncRenderElements(*effect, 0);
        const int rows = ui::ElementRowCount(*effect);
        benchmark::DoNotOptimize(ui::UpdateLayerControls(*effect, 0, rows));
    }
    Count(state, elements);
}

// As an element that changes has it done.
BENCHMARK_DEFINE_F(PanelRows, sync_elements)(benchmark::State& state) {
    effect->pblock->SetValue("autoSort"_param, 0, TRUE);
    for (auto unused : state) {
        effect::SyncRenderElements(*effect, 0);
        benchmark::DoNotOptimize(ui::ElementRowCount(*effect));
    }
    Count(state, elements);
}

BENCHMARK_DEFINE_F(PanelRows, draw_elements)(benchmark::State& state) {
    for (auto unused : state) {
        for (int row = 0; row < elements; ++row) {
            for (int column = 0; column < 4; ++column) {
                ui::PutCellText(ui::ElementCell(*effect, row, column), buffer.data(), 260);
                benchmark::DoNotOptimize(buffer);
            }
            benchmark::DoNotOptimize(ui::ElementCheckImage(*effect, row));
        }
    }
    Count(state, elements);
}

BENCHMARK_DEFINE_F(PanelRows, click_all_elements)(benchmark::State& state) {
    for (auto unused : state) {
        for (int row = 0; row < elements; ++row) {
            ui::ClickElement(*effect, {row, 0, 8});
            benchmark::DoNotOptimize(ui::UpdateLayerControls(*effect, row, elements));
        }
    }
    Count(state, elements);
}

BENCHMARK_DEFINE_F(PanelRows, move_through_all_elements)(benchmark::State& state) {
    for (auto unused : state) {
        for (int row = 0; row < elements - 1;)
            row = ui::MoveLayer(*effect, row, 1);
    }
    Count(state, elements);
}

BENCHMARK_DEFINE_F(PanelRows, sort_elements)(benchmark::State& state) {
    for (auto unused : state) {
        state.PauseTiming();
        effect->pblock->SetCount("layersProduction"_param, 0);
        effect::SyncRenderElements(*effect, 0);
        // The first sync sorted them.
        for (int row = 0; row < elements - 2; row += 2)
            ui::MoveLayer(*effect, row, 2);
        state.ResumeTiming();
        benchmark::DoNotOptimize(ui::SortOnce(*effect, 0));
    }
    Count(state, elements);
}

BENCHMARK_DEFINE_F(PanelRows, type_a_name)(benchmark::State& state) {
    int typed = 0;
    for (auto unused : state)
        ui::RenameElement(*effect, 250, NumberedName("Name", ++typed).data());
}

BENCHMARK_DEFINE_F(PanelRows, open_scene_layers)(benchmark::State& state) {
    ui::SceneLayerRows rows;
    for (auto unused : state)
        rows.Refresh();
    Count(state, layers);
}

BENCHMARK_DEFINE_F(PanelRows, draw_scene_layers)(benchmark::State& state) {
    ui::SceneLayerRows rows;
    rows.Refresh();
    for (auto unused : state) {
        for (int row = 0; row < layers; ++row) {
            ui::PutCellText(rows.Text(row), buffer.data(), 260);
            benchmark::DoNotOptimize(buffer);
            benchmark::DoNotOptimize(rows.CheckImage(*effect, row));
        }
    }
    Count(state, layers);
}

BENCHMARK_DEFINE_F(PanelRows, switch_all_scene_layers)(benchmark::State& state) {
    bool on = false;
    for (auto unused : state) {
        ui::ChooseSceneLayerMenu(*effect, on ? ui::enableAllItem : ui::disableAllItem, [] {});
        on = !on;
        state.PauseTiming();
        host::App().undo.Clear();
        state.ResumeTiming();
    }
    Count(state, layers);
}

BENCHMARK_DEFINE_F(PanelRows, open_selection_sets)(benchmark::State& state) {
    for (auto unused : state) {
        effect::SyncSelectionSets(*effect->pblock);
        ui::SelectionSetRows rows;
        benchmark::DoNotOptimize(rows.CheckImage(*effect, 0));
    }
    Count(state, sets);
}

BENCHMARK_DEFINE_F(PanelRows, draw_selection_sets)(benchmark::State& state) {
    ui::SelectionSetRows rows;
    for (auto unused : state) {
        rows.ListChanged();
        for (int row = 0; row < sets; ++row) {
            ui::PutCellText(rows.Text(row), buffer.data(), 260);
            benchmark::DoNotOptimize(buffer);
            benchmark::DoNotOptimize(rows.CheckImage(*effect, row));
        }
    }
    Count(state, sets);
}

BENCHMARK_DEFINE_F(PanelRows, switch_all_selection_sets)(benchmark::State& state) {
    ui::SelectionSetRows rows;
    bool on = false;
    for (auto unused : state) {
        rows.ChooseMenu(*effect, on ? ui::enableAllItem : ui::disableAllItem, [] {});
        on = !on;
        state.PauseTiming();
        host::App().undo.Clear();
        state.ResumeTiming();
    }
    Count(state, sets);
}

BENCHMARK_DEFINE_F(PanelRows, click_a_selection_set)(benchmark::State& state) {
    ui::SelectionSetRows rows;
    for (auto unused : state) {
        rows.Click(*effect, 500, 0, 5);
        state.PauseTiming();
        host::App().undo.Clear();
        state.ResumeTiming();
    }
}

BENCHMARK_REGISTER_F(PanelRows, open_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, sync_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, draw_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, click_all_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, move_through_all_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, sort_elements)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, type_a_name)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, open_scene_layers)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, draw_scene_layers)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, switch_all_scene_layers)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, open_selection_sets)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, draw_selection_sets)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, switch_all_selection_sets)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(PanelRows, click_a_selection_set)->Unit(benchmark::kMillisecond);

}  // namespace
