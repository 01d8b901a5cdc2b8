// How long the panel takes in a large scene: 500 render elements, 5,000 scene layers in a tree,
// 1,000 named selection sets and a list of 5,000 objects. Prints milliseconds, of what is done and
// of the drawing that it then asks for, the middle of five runs:
//
//     panel_speed
#include <windows.h>

#include <commctrl.h>
#include <custcont.h>
#include <iparamm2.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "bench/large_scene.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "host/application.h"
#include "host/win32/control_classes.h"
#include "host/win32/effect_rollups.h"
#include "plugin/entry.h"
#include "ui/win32/attach.h"

namespace {

using large_scene::elements;
using large_scene::layers;
using large_scene::NumberedName;
using large_scene::sets;

constexpr int objectList = 1094;
constexpr int elementList = 1043;
constexpr int layerList = 1153;
constexpr int setList = 1192;

effect::PSDOutput& MakeEffect() {
    plugin::Attach();
    ui::AttachPanel();
    host::RegisterControlClasses();
    host::Application& app = host::App();
    for (int i = 0; i < LibNumberClasses(); ++i)
        app.classes.Add(LibClassDesc(i));
    auto* effect = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    // As a loaded one, for which no file dialog opens.
    effect->dataVersion = 0;
    app.effects.emplace_back(effect);
    effect->pblock->SetValue("autoSort"_param, 0, FALSE);
    for (const ParamID output : {"outputSceneLayers"_param, "outputNamedSelectionSets"_param})
        effect->pblock->SetValue(output, 0, TRUE);
    return *effect;
}

void Draw(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

class Panel {
  public:
    explicit Panel(effect::PSDOutput& edited) : effect(edited) {
        window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_CLIPCHILDREN, 20, 20, 500, 950,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ShowWindow(window, SW_SHOWNOACTIVATE);
        rollups = CreateWindowExW(0, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0, 500, 950,
                                  window, nullptr, GetModuleHandleW(nullptr), nullptr);
        place = std::make_unique<host::EffectRollups>(rollups);
    }
    ~Panel() {
        Close();
        DestroyWindow(window);
    }
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    void Open() { dialogs = effect.CreateParamDialog(place.get()); }
    void Close() {
        if (SFXParamDlg* shown = std::exchange(dialogs, nullptr)) shown->DeleteThis();
    }
    // That rollup alone is unfolded.
    void Unfold(MapID map) {
        IRollupWindow* all = place->GetRollupWindow();
        const int wanted = all->GetPanelIndex(Dialog(map));
        for (int i = 0; i < all->GetNumPanels(); ++i)
            all->SetPanelOpen(i, i == wanted);
    }
    HWND Dialog(MapID map) const {
        const ParamBlockDesc2* desc = effect.pblock->GetDesc();
        return desc->cd->GetParamMap(desc, map)->GetHWnd();
    }
    HWND Control(MapID map, int id) const { return GetDlgItem(Dialog(map), id); }
    void Tell(MapID map, int id, int code) const {
        SendMessageW(Dialog(map), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, code)),
                     reinterpret_cast<LPARAM>(Control(map, id)));
    }

    effect::PSDOutput& effect;
    HWND window = nullptr;
    HWND rollups = nullptr;
    std::unique_ptr<host::EffectRollups> place;
    SFXParamDlg* dialogs = nullptr;
};

struct Run {
    double acting = 0.0;
    double drawing = 0.0;
};

void DoNothing() {}

void Time(const char* what, HWND drawn, const std::function<void()>& act,
          const std::function<void()>& before = DoNothing) {
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start) {
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    };
    std::array<Run, 5> runs{};
    for (Run& run : runs) {
        before();
        Draw(drawn);
        const Clock::time_point start = Clock::now();
        act();
        run.acting = since(start);
        Draw(drawn);
        run.drawing = since(start) - run.acting;
    }
    const auto total = [](const Run& run) { return run.acting + run.drawing; };
    std::ranges::sort(runs, {}, total);
    std::printf("%-50s %8.1f + %6.1f ms\n", what, runs[2].acting, runs[2].drawing);
    std::fflush(stdout);
}

// With the list's menu: its item of that number, by the keys that wait for it.
void SwitchAll(HWND list, int item) {
    PostMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(60, 40));
    PostMessageW(list, WM_RBUTTONUP, 0, MAKELPARAM(60, 40));
    for (int i = 0; i < item; ++i)
        PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

void ScrollThrough(HWND list) {
    const int rows = ListView_GetItemCount(list);
    const int page = std::max(ListView_GetCountPerPage(list), 1);
    for (int row = 0; row < rows; row += page) {
        ListView_EnsureVisible(list, std::min(row + page - 1, rows - 1), FALSE);
        Draw(list);
    }
}

void ClickCheckBox(HWND list, int row) {
    RECT area{};
    ListView_EnsureVisible(list, row, FALSE);
    ListView_GetItemRect(list, row, &area, LVIR_BOUNDS);
    const LPARAM at = MAKELPARAM(area.left + 9, (area.top + area.bottom) / 2);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(list, WM_LBUTTONUP, 0, at);
}

void Select(HWND list, int row) {
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void TimeElements(Panel& panel) {
    constexpr MapID map = 1;
    constexpr UINT_PTR timer = 2343;
    panel.Unfold(map);
    Draw(panel.window);
    HWND list = panel.Control(map, elementList);
    const auto tick = [&] { SendMessageW(panel.Dialog(map), WM_TIMER, timer, 0); };
    host::RenderElementManager& manager = host::App().elements[RS_Production];
    Time("500 elements: scroll through all", list, [&] { ScrollThrough(list); });
    int row = 0;
    Time("500 elements: select the next row", panel.window, [&] { Select(list, ++row); });
    Time("500 elements: switch one", panel.window, [&] { ClickCheckBox(list, row); });
    Time("500 elements: switch 20 with the space bar", panel.window, [&] {
        for (int i = 0; i < 20; ++i) {
            Select(list, i);
            SendMessageW(list, WM_KEYDOWN, VK_SPACE, 1);
        }
    });
    Time(
        "500 elements: sort", panel.window, [&] { panel.Tell(map, 1079, BN_CLICKED); },
        [&] {
            for (int from = 0; from < 5; ++from) {
                Select(list, from * 90);
                panel.Tell(map, 1068, BN_CLICKED);
            }
        });
    Time(
        "500 elements: move a row down", panel.window, [&] { panel.Tell(map, 1068, BN_CLICKED); },
        [&] { Select(list, 100); });
    Time("500 elements: type a name of 20 letters, and a tick", panel.window, [&] {
        HWND field = panel.Control(map, 1063);
        SetFocus(field);
        for (int i = 0; i < 20; ++i)
            SendMessageW(field, WM_CHAR, L'a', 1);
        SendMessageW(field, WM_KEYDOWN, VK_RETURN, 1);
        tick();
    });
    Time("500 elements: one more, and a tick", panel.window, [&] {
        manager.Add(Class_ID{4, 0}, MSTR(_M("more")));
        tick();
    });
    Time("500 elements: one fewer, and a tick", panel.window, [&] {
        manager.Remove(manager.Find(MSTR(_M("more"))));
        tick();
    });
    Time("500 elements: change the depth", panel.window, [&] {
        IParamBlock2& block = *panel.effect.pblock;
        block.SetValue("bitDepth"_param, 0, block.GetInt("bitDepth"_param) == 16 ? 8 : 16);
    });
}

void TimeLayers(Panel& panel) {
    constexpr MapID map = 5;
    constexpr UINT_PTR timer = 98918;
    panel.Unfold(map);
    Draw(panel.window);
    HWND list = panel.Control(map, layerList);
    const auto tick = [&] { SendMessageW(panel.Dialog(map), WM_TIMER, timer, 0); };
    host::Scene& scene = host::App().scene;
    Time("5,000 layers: scroll through all", list, [&] { ScrollThrough(list); });
    Time("5,000 layers: make the rows anew", panel.window,
         [&] { panel.Tell(map, 1158, BN_CLICKED); });
    Time("5,000 layers: switch one", panel.window, [&] { ClickCheckBox(list, 10); });
    Time(
        "5,000 layers: switch all off", panel.window, [&] { SwitchAll(list, 2); },
        [&] { SwitchAll(list, 1); });
    Time(
        "5,000 layers: switch all on", panel.window, [&] { SwitchAll(list, 1); },
        [&] { SwitchAll(list, 2); });
    Time("5,000 layers: undo of that", panel.window, [&] { host::App().undo.Undo(); });
    Time("5,000 layers: one more, and a tick", panel.window, [&] {
        scene.AddLayer(MSTR(_M("more")));
        tick();
    });
    Time("5,000 layers: one fewer", panel.window,
         [&] { scene.Remove(*scene.FindLayer(MSTR(_M("more")))); });
    Time(
        "5,000 layers: 100 fewer, one by one", panel.window,
        [&] {
            while (host::SceneLayer* more = scene.FindLayer(MSTR(_M("more"))))
                scene.Remove(*more);
        },
        [&] {
            for (int i = 0; i < 100; ++i)
                scene.AddLayer(MSTR(_M("more")));
            tick();
        });
    host::App().undo.Clear();
}

void TimeSets(Panel& panel) {
    constexpr MapID map = 7;
    panel.Unfold(map);
    Draw(panel.window);
    HWND list = panel.Control(map, setList);
    host::Scene& scene = host::App().scene;
    Time("1,000 sets: scroll through all", list, [&] { ScrollThrough(list); });
    Time("1,000 sets: switch one", panel.window, [&] { ClickCheckBox(list, 10); });
    Time(
        "1,000 sets: switch all off", panel.window, [&] { SwitchAll(list, 2); },
        [&] { SwitchAll(list, 1); });
    Time(
        "1,000 sets: switch all on", panel.window, [&] { SwitchAll(list, 1); },
        [&] { SwitchAll(list, 2); });
    Time("1,000 sets: undo of that", panel.window, [&] { host::App().undo.Undo(); });
    Time(
        "1,000 sets: 100 more, one by one", panel.window,
        [&] {
            for (int i = 0; i < 100; ++i)
                scene.AddSelectionSet(NumberedName("more", i), {});
        },
        [&] {
            for (int i = 0; i < 100; ++i)
                scene.RemoveSelectionSet(NumberedName("more", i));
        });
    host::App().undo.Clear();
}

void TimeObjects(Panel& panel) {
    constexpr MapID map = 2;
    constexpr int objects = 5000;
    constexpr int add = 1011;
    constexpr int down = 1008;
    constexpr int remove = 1004;
    panel.Unfold(map);
    host::Application& app = host::App();
    panel.effect.pblock->SetValue("outputObjects"_param, 0, TRUE);
    std::vector<host::Node*> nodes;
    for (int i = 0; i < objects; ++i)
        nodes.push_back(&app.scene.AddNode(NumberedName("Object", i)));
    app.selection.Set(nodes);
    Draw(panel.window);
    HWND list = panel.Control(map, objectList);
    Time(
        "5,000 objects: add all", panel.window, [&] { panel.Tell(map, add, BN_CLICKED); },
        [&] { panel.effect.pblock->SetCount("objectList"_param, 0); });
    const auto selectEach = [&](int step, int rows) {
        SendMessageW(list, LB_SETSEL, FALSE, -1);
        for (int row = 0; row < rows; ++row)
            SendMessageW(list, LB_SETSEL, TRUE, row * step);
    };
    Time(
        "5,000 objects: move one down", panel.window, [&] { panel.Tell(map, down, BN_CLICKED); },
        [&] { selectEach(2, 1); });
    Time(
        "5,000 objects: move 100 down", panel.window, [&] { panel.Tell(map, down, BN_CLICKED); },
        [&] { selectEach(2, 100); });
    Time("5,000 objects: undo of that", panel.window, [&] { app.undo.Undo(); });
    Time(
        "5,000 objects: remove 100", panel.window, [&] { panel.Tell(map, remove, BN_CLICKED); },
        [&] { selectEach(2, 100); });
    Time("5,000 objects: undo of that", panel.window, [&] { app.undo.Undo(); });
    app.undo.Clear();
}

}  // namespace

int main() {
    effect::PSDOutput& effect = MakeEffect();
    {
        Panel panel(effect);
        const auto open = [&] { panel.Open(); };
        const auto close = [&] { panel.Close(); };
        Time("open the panel in an empty scene", panel.window, open, close);
        panel.Close();
        large_scene::Fill();
        Time("open the panel", panel.window, open, close);
        TimeElements(panel);
        TimeLayers(panel);
        TimeSets(panel);
        TimeObjects(panel);
        Time("close the panel", panel.window, close, [&] {
            if (!panel.dialogs) panel.Open();
        });
    }
    host::ResetApplication();
    return 0;
}
