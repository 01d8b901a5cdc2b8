#include "ui/win32/parameter_map_procedure.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <tuple>

#include "host/win32/accelerators.h"
#include "plugin/scene_file_state.h"
#include "tests/host/win32/leak_rounds.h"
#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"
#include "ui/rollup_timers.h"

namespace {

constexpr MapID allMaps[] = {0, 1, 2, 4, 5, 6, 7};

class DialogProcedure : public PanelTest {
  protected:
    DialogProcedure() { Render().output.SetName(_M("C:\\r\\frame.exr")); }
    ~DialogProcedure() override {
        Close();
        host::ResetAccelerators();
    }

    // All edits of the panel can be typed in.
    void EnableEdits() {
        for (const ParamID id :
             {"outputNodeIDs"_param, "outputMtlIDs"_param, "embedHelpersInfo"_param}) {
            Set(id, TRUE);
        }
        Set("matchRenderOutputFilename"_param, FALSE);
    }
    static std::vector<int> ListenedCodes() {
        std::vector<int> codes;
        for (const host::Notifications::Registration& each : Host().notifications.Registrations())
            codes.push_back(each.code);
        std::sort(codes.begin(), codes.end());
        return codes;
    }
    static bool HearsGlobally() {
        ui::PSDOutputParamMapUserDlgProc& procedure = ui::DialogProcedure();
        const bool hears = UnRegisterGlobalReference(&procedure) != FALSE;
        if (hears) RegisterGlobalReference(&procedure);
        return hears;
    }
    // Every control of the panel, with its rollup.
    std::vector<std::pair<MapID, HWND>> Controls() {
        std::vector<std::pair<MapID, HWND>> controls;
        for (const MapID map : allMaps) {
            for (HWND child = GetWindow(Dialog(map), GW_CHILD); child;
                 child = GetWindow(child, GW_HWNDNEXT)) {
                controls.emplace_back(map, child);
            }
        }
        return controls;
    }
};

TEST_F(DialogProcedure, WhileATextIsTypedTheHostsCommandsAreOff) {
    EnableEdits();
    Open();
    for (const auto& [map, edit] :
         {std::pair<MapID, int>{0, IDC_FILE_NAME}, std::pair<MapID, int>{0, IDC_RESOLUTION},
          std::pair<MapID, int>{2, IDC_NODE_ID_LIST},
          std::pair<MapID, int>{2, IDC_MATERIAL_ID_LIST},
          std::pair<MapID, int>{4, IDC_HELPER_WILDCARD}}) {
        EXPECT_TRUE(host::AcceleratorsEnabled());
        SetFocus(Control(map, edit));
        EXPECT_FALSE(host::AcceleratorsEnabled()) << edit;
        SetFocus(Control(0, IDC_FILES));
        EXPECT_TRUE(host::AcceleratorsEnabled()) << edit;
    }
    SetFocus(Control(2, IDC_NODE_ID_LIST));
    SetFocus(Control(0, IDC_RESOLUTION));
    EXPECT_EQ(host::AcceleratorDisablings(), 1);
    SetFocus(window);
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(DialogProcedure, ClosingWhileATextIsTypedGivesItAndTurnsTheCommandsOn) {
    EnableEdits();
    Open();
    Type(Control(0, IDC_FILE_NAME), "C:\\r\\typed.psd");
    EXPECT_FALSE(host::AcceleratorsEnabled());
    std::exchange(dialogs, nullptr)->DeleteThis();
    EXPECT_TRUE(host::AcceleratorsEnabled());
    EXPECT_EQ(host::ToUtf8(Block().GetStr("filename"_param)), "C:\\r\\typed.psd");
}

TEST_F(DialogProcedure, AWindowThatIsDestroyedWhileATextIsTypedTurnsTheCommandsOn) {
    EnableEdits();
    Open();
    SetFocus(Control(2, IDC_NODE_ID_LIST));
    EXPECT_FALSE(host::AcceleratorsEnabled());
    DestroyWindow(rollupWindow);
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(DialogProcedure, AnswersWhatItHandles) {
    Open();
    ui::PSDOutputParamMapUserDlgProc& procedure = ui::DialogProcedure();
    NMHDR note{};
    MEASUREITEMSTRUCT measured{};
    DRAWITEMSTRUCT drawn{};
    const std::tuple<UINT, LPARAM, INT_PTR> cases[] = {
        {WM_COMMAND, 0, 1},
        {WM_CUSTEDIT_ENTER, 0, 1},
        {WM_TIMER, 0, 1},
        {WM_NOTIFY, reinterpret_cast<LPARAM>(&note), 0},
        {WM_MEASUREITEM, reinterpret_cast<LPARAM>(&measured), 1},
        {WM_DRAWITEM, reinterpret_cast<LPARAM>(&drawn), 1},
        {WM_SIZE, 0, 0},
        {WM_LBUTTONDOWN, 0, 0},
        {WM_CTLCOLOREDIT, 0, 0}};
    for (const MapID map : allMaps) {
        for (const auto& [message, lParam, result] : cases) {
            EXPECT_EQ(procedure.DlgProc(0, Map(map), Dialog(map), message, 0, lParam), result)
                << map << ' ' << message;
            EXPECT_EQ(procedure.DlgProc(0, nullptr, Dialog(map), message, 0, lParam), 0);
        }
    }
}

TEST_F(DialogProcedure, HoldsForTheHostsPresentInstant) {
    Host().settings.time = 480;
    const Interval validity = ui::DialogProcedure().GetValidity();
    EXPECT_EQ(validity.Start(), 480);
    EXPECT_EQ(validity.End(), 480);
}

TEST_F(DialogProcedure, ShowsEffectsOnly) {
    Open();
    ui::DialogProcedure().SetThing(nullptr);
    ui::DialogProcedure().SetThing(&UseRenderer(VRAY_CLASS_ID));
    Press(0, IDC_RESOLUTION_300);
    EXPECT_EQ(Block().GetFloat("resolution"_param), 300.0F);
    // It isn't on the heap.
    ui::DialogProcedure().DeleteThis();
}

TEST_F(DialogProcedure, OpeningThePanelMakesItsEffectTheCurrentOne) {
    Set("unnamed37"_param, TRUE);
    Open();
    EXPECT_EQ(Block().GetInt("unnamed37"_param), FALSE);
    EXPECT_EQ(plugin::CurrentInstance(), effect);
}

TEST_F(DialogProcedure, ListensWhileItsRollupsAreOpen) {
    const std::vector<int> before = ListenedCodes();
    EXPECT_FALSE(HearsGlobally());
    Open();
    std::vector<int> wanted = before;
    wanted.insert(wanted.end(),
                  {35, 143, 152, 18, 148, 149, 246, 173, 139, 174, 175, 184, 185, 188});
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(ListenedCodes(), wanted);
    EXPECT_TRUE(HearsGlobally());
    EXPECT_EQ(plugin::OpenPanel(), &ui::DialogProcedure());
    Close();
    EXPECT_EQ(ListenedCodes(), before);
    EXPECT_FALSE(HearsGlobally());
    EXPECT_EQ(plugin::OpenPanel(), nullptr);
}

TEST_F(DialogProcedure, AnEffectThatGoesWhileItsPanelIsOpenIsLeftAlone) {
    const std::vector<int> before = ListenedCodes();
    Set("outputObjects"_param, TRUE);
    Host().scene.AddNode(_M("Box"));
    Host().elements[RS_Production].Add(Class_ID(1, 2), _M("Element"));
    Open();
    SetFocus(Control(0, IDC_RESOLUTION));
    const std::vector<std::pair<MapID, HWND>> controls = Controls();
    IRollupWindow* rollups = place->GetRollupWindow();
    Host().effects.clear();
    for (const auto& [map, control] : controls) {
        // A list waits for the mouse to move or come up.
        if (ClassOf(control) == "SysListView32") continue;
        Click(control);
        PressKey(control, VK_SPACE);
        // An edit of the system's has a menu of its own, which lasts until the user chooses.
        if (ClassOf(control) != "CustEdit") RightClick(control);
    }
    for (const ui::RollupTimer& timer :
         {ui::fileNameTimer, ui::newEffectTimer, ui::renderElementsTimer, ui::sceneLayersTimer}) {
        for (int i = 0; i < rollups->GetNumPanels(); ++i)
            SendMessageW(rollups->GetPanelDlg(i), WM_TIMER, timer.id, 0);
    }
    Host().selection.Set({&Host().scene.AddNode(_M("Cone"))});
    for (const int code : {35, 143, 18, 148, 246, 173, 139, 174, 175})
        host::Broadcast(code);
    Close();
    EXPECT_FALSE(HearsGlobally());
    // The effect took its own back, but for two that stay for good.
    std::vector<int> left = before;
    for (const int code : {20, 21, 184, 185, 188})
        left.erase(std::find(left.begin(), left.end(), code));
    left.insert(left.end(), {202, 203});
    std::sort(left.begin(), left.end());
    EXPECT_EQ(ListenedCodes(), left);
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(DialogProcedure, AnotherPlaceTakesOverAndTheFormerOneClosesQuietly) {
    const std::vector<int> before = ListenedCodes();
    Open();
    const std::vector<int> open = ListenedCodes();
    HWND secondWindow =
        CreateWindowExW(WS_EX_CONTROLPARENT, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0,
                        560, 700, window, nullptr, GetModuleHandleW(nullptr), nullptr);
    host::EffectRollups secondPlace(secondWindow);
    SFXParamDlg* second = effect->CreateParamDialog(&secondPlace);
    EXPECT_EQ(ListenedCodes(), open);
    std::exchange(dialogs, nullptr)->DeleteThis();
    EXPECT_EQ(ListenedCodes(), open);
    EXPECT_TRUE(HearsGlobally());
    EXPECT_EQ(plugin::OpenPanel(), &ui::DialogProcedure());
    Render().output.SetName(_M("C:\\r\\second.exr"));
    host::Broadcast(NOTIFY_RENDPARAM_CHANGED);
    EXPECT_EQ(TextOf(0, IDC_FILE_NAME), "C:\\r\\second.psd");
    second->DeleteThis();
    EXPECT_EQ(ListenedCodes(), before);
    EXPECT_EQ(plugin::OpenPanel(), nullptr);
}

TEST_F(DialogProcedure, TheListsOfAFormerPlaceHoldNoPicturesThatAreGone) {
    Open();
    std::vector<HWND> lists;
    for (const auto& [map, list] :
         {std::pair{1, IDC_ELEMENT_LIST}, std::pair{5, IDC_SCENE_LAYER_LIST},
          std::pair{7, IDC_SELECTION_SET_LIST}}) {
        lists.push_back(Control(static_cast<MapID>(map), list));
        EXPECT_TRUE(ListView_GetImageList(lists.back(), LVSIL_STATE));
    }
    HWND secondWindow =
        CreateWindowExW(WS_EX_CONTROLPARENT, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0,
                        560, 700, window, nullptr, GetModuleHandleW(nullptr), nullptr);
    host::EffectRollups secondPlace(secondWindow);
    effect->CreateParamDialog(&secondPlace)->DeleteThis();
    for (HWND list : lists) {
        ASSERT_TRUE(IsWindow(list));
        EXPECT_FALSE(ListView_GetImageList(list, LVSIL_STATE));
    }
}

TEST_F(DialogProcedure, ThePanelMayCloseWhileItAsksForAFile) {
    Open();
    Host().fileDialogs = [this](const host::FileDialog&) -> std::optional<MSTR> {
        std::exchange(dialogs, nullptr)->DeleteThis();
        return MSTR(_M("C:\\r\\chosen.psd"));
    };
    SendMessageW(Dialog(0), WM_COMMAND, MAKEWPARAM(IDC_FILES, BN_CLICKED),
                 reinterpret_cast<LPARAM>(Control(0, IDC_FILES)));
    EXPECT_EQ(dialogs, nullptr);
    EXPECT_EQ(host::ToUtf8(Block().GetStr("filename"_param)), "C:\\r\\chosen.psd");
}

TEST_F(DialogProcedure, ThePanelMayCloseWhileItAsksAboutTheFrameBuffer) {
    UseRenderer(VRAY_CLASS_ID);
    Render().output.SetName(_M("C:\\r\\frame.png"));
    Open();
    Host().boxes.SetResponder([this](const host::BoxRecord& box) {
        std::exchange(dialogs, nullptr)->DeleteThis();
        return box.answer;
    });
    Press(0, IDC_DEPTH_32);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(dialogs, nullptr);
    EXPECT_EQ(Block().GetInt("bitDepth"_param), 32);
}

TEST_F(DialogProcedure, ThePanelMayCloseUnderTheAdvancedOptions) {
    Open();
    const InModalLoop loop([] { return FindDialog(L"veltrane - Advanced Options"); },
                           [this](HWND dialog) {
                               Click(GetDlgItem(dialog, IDC_HIDE_MATTE_LAYERS));
                               std::exchange(dialogs, nullptr)->DeleteThis();
                               Click(GetDlgItem(dialog, IDOK));
                           });
    Press(0, IDC_ADVANCED_OPTIONS);
    EXPECT_TRUE(loop.HasActed());
    EXPECT_EQ(Block().GetInt("matteLayersVisible"_param), FALSE);
}

TEST_F(DialogProcedure, ClosingInTheMiddleOfASpinnersDragTakesItBack) {
    Open();
    Host().undo.Clear();
    HWND spinner = Control(0, IDC_RESOLUTION_SPIN);
    SendMessageW(spinner, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    SendMessageW(spinner, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(3, -30));
    EXPECT_GT(Block().GetFloat("resolution"_param), 73.0F);
    std::exchange(dialogs, nullptr)->DeleteThis();
    EXPECT_EQ(Block().GetFloat("resolution"_param), 72.0F);
    EXPECT_FALSE(Host().undo.Holding());
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_EQ(GetCapture(), nullptr);
}

// One control of each kind that the panel has: a mouse button that is held on it may mean
// something.
std::vector<std::size_t> OneOfEachKind(const std::vector<std::pair<MapID, HWND>>& controls) {
    std::set<std::pair<std::string, LONG>> kinds;
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        HWND control = controls[i].second;
        // A combo's list would be a mode of its own.
        if (ClassOf(control) == "ComboBox") continue;
        // Of a button what it is (a check box, a radio), of a label whether it is one to press.
        const LONG style = GetWindowLongW(control, GWL_STYLE) & (BS_TYPEMASK | SS_NOTIFY);
        if (kinds.emplace(ClassOf(control), style).second) chosen.push_back(i);
    }
    return chosen;
}

TEST_F(DialogProcedure, ClosingInTheMiddleOfAnyPressLeavesNothingBehind) {
    Set("outputObjects"_param, TRUE);
    EnableEdits();
    Open();
    const std::vector<std::size_t> numbers = OneOfEachKind(Controls());
    EXPECT_GE(numbers.size(), 9U);
    Close();
    for (const std::size_t number : numbers) {
        Open();
        HWND control = Controls()[number].second;
        const int id = GetDlgCtrlID(control);
        SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        SendMessageW(control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 8));
        Close();
        EXPECT_EQ(GetCapture(), nullptr) << id;
        EXPECT_FALSE(Host().undo.Holding()) << id;
        EXPECT_TRUE(host::AcceleratorsEnabled()) << id;
    }
}

// What the process has on its heaps, in bytes.
std::size_t BusyBytes() {
    HANDLE heaps[64] = {};
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        }
    }
    return bytes;
}

// The process's handles of the system's kernel. Of the whole system's, since not every system
// answers GetProcessHandleCount.
int HandleCount() {
    struct Handle {
        WORD process;
        WORD trace;
        BYTE kind;
        BYTE flags;
        WORD value;
        void* object;
        DWORD access;
    };
    constexpr int allHandles = 16;
    using QuerySystem = LONG(WINAPI*)(int, void*, ULONG, ULONG*);
    auto* address = reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation"));
    std::vector<char> answer(1 << 22);
    ULONG length = 0;
    if (reinterpret_cast<QuerySystem>(address)(allHandles, answer.data(),
                                               static_cast<ULONG>(answer.size()), &length) != 0) {
        ADD_FAILURE() << "the system doesn't tell its handles";
        return 0;
    }
    ULONG count = 0;
    std::memcpy(&count, answer.data(), sizeof count);
    int own = 0;
    for (ULONG i = 0; i < count; ++i) {
        Handle handle{};
        std::memcpy(&handle, answer.data() + sizeof(void*) + i * sizeof handle, sizeof handle);
        own += handle.process == static_cast<WORD>(GetCurrentProcessId());
    }
    return own;
}

TEST_F(DialogProcedure, OpeningAndClosingAgainAndAgainLeavesNothingBehind) {
    for (ULONG i = 0; i < 20; ++i) {
        Host().scene.AddNode(host::FromUtf8("Node" + std::to_string(i)));
        Host().elements[RS_Production].Add(Class_ID(1, i), _M("Element"));
    }
    std::size_t labels = 0;
    const auto round = [&] {
        Open();
        PumpMessages();
        SetFocus(Control(0, IDC_RESOLUTION));
        const std::vector<std::pair<MapID, HWND>> controls = Controls();
        labels = static_cast<std::size_t>(
            std::count_if(controls.begin(), controls.end(),
                          [](const auto& each) { return ClassOf(each.second) == "Static"; }));
        Close();
        PumpMessages();
    };
    // The system keeps things from its first uses.
    for (int i = 0; i < 3; ++i)
        round();
    Host().undo.Clear();
    const ObjectCounts objects = CountObjects();
    const std::vector<int> codes = ListenedCodes();
    const int handles = HandleCount();
    EXPECT_GT(handles, 0);
    const std::size_t bytes = BusyBytes();
    const int rounds = LeakRounds();
    for (int i = 0; i < rounds; ++i)
        round();
    Host().undo.Clear();
    EXPECT_EQ(CountObjects(), objects);
    EXPECT_EQ(HandleCount(), handles);
    EXPECT_EQ(ListenedCodes(), codes);
    EXPECT_FALSE(HearsGlobally());
    EXPECT_EQ(host::AcceleratorDisablings(), 0);
    // Of each label some systems lose 24 bytes: what they keep of its font.
    const std::size_t ofLabels = 24 * labels * static_cast<std::size_t>(rounds);
    EXPECT_LE(BusyBytes(), bytes + ofLabels + 4096);
}

}  // namespace
