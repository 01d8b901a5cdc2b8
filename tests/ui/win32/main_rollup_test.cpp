#include "ui/win32/main_rollup.h"

#include <custcont.h>

#include <optional>
#include <tuple>

#include "effect/color_decisions.h"
#include "host/win32/ui_scale.h"
#include "plugin/library.h"
#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/rollup_timers.h"
#include "ui/win32/library_file.h"
#include "ui/win32/open_file.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr MapID mainMap = 0;

std::vector<std::string> openedFiles;

class MainRollup : public PanelTest {
  protected:
    MainRollup() {
        openedFiles.clear();
        ui::UseFileOpener([](const MSTR& file) { openedFiles.push_back(host::ToUtf8(file)); });
        Render().output.SetName(_M("C:\\r\\frame.exr"));
    }
    ~MainRollup() override {
        Close();
        ui::UseFileOpener(nullptr);
        host::SetUIScaleFactor(std::nullopt);
        if (pointed) SetCursorPos(before.x, before.y);
    }

    int Value(ParamID id) { return Block().GetInt(id); }
    std::string Filename() { return host::ToUtf8(Block().GetStr("filename"_param)); }
    std::string FieldText() { return TextOf(mainMap, IDC_FILE_NAME); }
    HWND Main(int id) { return Control(mainMap, id); }

    // The user answers every file dialog with this; empty cancels. The dialogs come into `asked`.
    void AnswerFileDialogs(const std::string& path) {
        Host().fileDialogs = [this, path](const host::FileDialog& dialog) {
            asked.push_back(dialog);
            return path.empty() ? std::nullopt : std::optional(host::FromUtf8(path));
        };
    }
    void PointAt(POINT point) {
        if (!pointed) GetCursorPos(&before);
        pointed = true;
        SetCursorPos(point.x, point.y);
    }
    void PointAtMiddleOf(int id) {
        const RECT area = PlaceOf(Main(id));
        PointAt({(area.left + area.right) / 2, (area.top + area.bottom) / 2});
    }
    LRESULT TellMain(UINT message) {
        POINT mouse{};
        GetCursorPos(&mouse);
        ScreenToClient(Dialog(mainMap), &mouse);
        return SendMessageW(Dialog(mainMap), message, 0, MAKELPARAM(mouse.x, mouse.y));
    }
    // Real time in which timers tick.
    static void Wait(DWORD milliseconds) {
        const ULONGLONG end = GetTickCount64() + milliseconds;
        PumpUntil([end] { return GetTickCount64() >= end; });
    }

    std::vector<host::FileDialog> asked;

  private:
    bool pointed = false;
    POINT before{};
};

TEST_F(MainRollup, HasItsControlsUnderTheirTexts) {
    Open();
    const std::tuple<int, const char*, const char*> controls[] = {
        {IDC_HEADER, "Static", ""},
        {IDC_ABOUT_ZONE, "Static", "About"},
        {IDC_HELP_ZONE, "Static", "Help"},
        {IDC_MATCH_RENDER_OUTPUT, "Button", "Match Render Output Filename"},
        {IDC_FILE_FORMAT, "ComboBox", "PSD"},
        {IDC_FILES, "CustButton", "Files..."},
        {IDC_DEPTH_8, "Button", "8 Bits"},
        {IDC_DEPTH_16, "Button", "16 Bits"},
        {IDC_DEPTH_32, "Button", "32 Bits (HDR)"},
        {IDC_RESOLUTION, "CustEdit", "72.0"},
        {IDC_RESOLUTION_SPIN, "SpinnerControl", ""},
        {IDC_RESOLUTION_72, "CustButton", "72"},
        {IDC_RESOLUTION_150, "CustButton", "150"},
        {IDC_RESOLUTION_300, "CustButton", "300"},
        {IDC_OUTPUT_RENDER, "Button", "Output Render as:"},
        {IDC_OUTPUT_RENDER_AS, "ComboBox", "Layer + Mask"},
        {IDC_RENDER_PREMULTIPLIED, "Button", "Premultiplied Alpha"},
        {IDC_ADVANCED_OPTIONS, "CustButton", "Advanced Options"},
    };
    for (const auto& [id, kind, text] : controls) {
        EXPECT_EQ(ClassOf(Main(id)), kind) << id;
        EXPECT_EQ(LabelOf(Main(id)), text) << id;
    }
    EXPECT_EQ(ClassOf(Main(IDC_FILE_NAME)), "CustEdit");
}

TEST_F(MainRollup, TheTabKeyGoesThroughAllThatCanBeUsed) {
    Open();
    EXPECT_THAT(TabOrder(Dialog(mainMap)),
                ElementsAre(IDC_MATCH_RENDER_OUTPUT, IDC_FILE_FORMAT, IDC_FILES, IDC_DEPTH_16,
                            IDC_RESOLUTION, IDC_RESOLUTION_72, IDC_RESOLUTION_150,
                            IDC_RESOLUTION_300, IDC_OUTPUT_RENDER, IDC_OUTPUT_RENDER_AS,
                            IDC_RENDER_PREMULTIPLIED, IDC_ADVANCED_OPTIONS));
}

TEST_F(MainRollup, CheckBoxesAreTheirParametersBothWays) {
    Open();
    for (const auto& [box, id] :
         {std::pair{IDC_OUTPUT_RENDER, "createRenderOutputLayer"_param},
          std::pair{IDC_RENDER_PREMULTIPLIED, "premultipliedAlpha"_param},
          std::pair{IDC_MATCH_RENDER_OUTPUT, "matchRenderOutputFilename"_param}}) {
        EXPECT_TRUE(IsChecked(mainMap, box)) << box;
        Press(mainMap, box);
        EXPECT_EQ(Value(id), FALSE) << box;
        EXPECT_FALSE(IsChecked(mainMap, box)) << box;
        EXPECT_EQ(UndoName(), "Parameter Change") << box;
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_EQ(Value(id), TRUE) << box;
        EXPECT_TRUE(IsChecked(mainMap, box)) << box;
        Set(id, FALSE);
        EXPECT_FALSE(IsChecked(mainMap, box)) << box;
    }
}

TEST_F(MainRollup, TheRadiosAreTheDepthBothWays) {
    Open();
    const std::pair<int, int> radios[] = {{IDC_DEPTH_8, 8}, {IDC_DEPTH_16, 16}, {IDC_DEPTH_32, 32}};
    const auto checked = [&] {
        std::vector<int> depths;
        for (const auto& [radio, depth] : radios) {
            if (IsChecked(mainMap, radio)) depths.push_back(depth);
        }
        return depths;
    };
    EXPECT_THAT(checked(), ElementsAre(16));
    for (const auto& [radio, depth] : {radios[0], radios[2], radios[1]}) {
        Press(mainMap, radio);
        EXPECT_EQ(Value("bitDepth"_param), depth);
        EXPECT_THAT(checked(), ElementsAre(depth));
    }
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(checked(), ElementsAre(32));
    Set("bitDepth"_param, 8);
    EXPECT_THAT(checked(), ElementsAre(8));
}

TEST_F(MainRollup, TheCombosOfferTheirChoicesAndStoreThem) {
    Open();
    const auto texts = [this](int id) {
        std::vector<std::string> items;
        const LRESULT count = SendMessageW(Main(id), CB_GETCOUNT, 0, 0);
        for (LRESULT item = 0; item < count; ++item) {
            MCHAR text[64] = {};
            SendMessageW(Main(id), CB_GETLBTEXT, static_cast<WPARAM>(item),
                         reinterpret_cast<LPARAM>(text));
            items.push_back(host::ToUtf8(text));
        }
        return items;
    };
    EXPECT_THAT(texts(IDC_OUTPUT_RENDER_AS),
                ElementsAre("Layer with Transparency", "Layer (No Transparency)", "Layer + Mask",
                            "Layer + Disabled Mask", "Layer + Alpha Channel"));
    EXPECT_THAT(texts(IDC_FILE_FORMAT), ElementsAre("PSD", "PSB"));
    for (int item = 0; item < 5; ++item) {
        Choose(mainMap, IDC_OUTPUT_RENDER_AS, item);
        EXPECT_EQ(Value("outputRenderAs"_param), item);
    }
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(SendMessageW(Main(IDC_OUTPUT_RENDER_AS), CB_GETCURSEL, 0, 0), 3);
    // By the keyboard.
    SetFocus(Main(IDC_FILE_FORMAT));
    PressKey(Main(IDC_FILE_FORMAT), VK_DOWN);
    EXPECT_EQ(Value("fileFormat"_param), 1);
    EXPECT_EQ(FieldText(), "C:\\r\\frame.psb");
}

TEST_F(MainRollup, TheResolutionIsTypedWithinItsRange) {
    Open();
    const auto resolution = [this] { return Block().GetFloat("resolution"_param); };
    for (const auto& [typed, wanted] : {std::pair{"96.5", 96.5F}, std::pair{"0.25", 1.0F},
                                        std::pair{"20000", 10000.0F}, std::pair{"x", 10000.0F}}) {
        Type(Main(IDC_RESOLUTION), typed);
        PressKey(Main(IDC_RESOLUTION), VK_RETURN);
        EXPECT_EQ(resolution(), wanted) << typed;
    }
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(resolution(), 1.0F);
    EXPECT_EQ(TextOf(mainMap, IDC_RESOLUTION), "1.0");
}

TEST_F(MainRollup, TheSpinnersStepIsOne) {
    Open();
    HWND spinner = Main(IDC_RESOLUTION_SPIN);
    Click(spinner, 3, 3);
    EXPECT_EQ(Block().GetFloat("resolution"_param), 73.0F);
    EXPECT_EQ(UndoName(), "Parameter Change");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(Block().GetFloat("resolution"_param), 72.0F);
    EXPECT_EQ(TextOf(mainMap, IDC_RESOLUTION), "72.0");
}

TEST_F(MainRollup, TheThreeButtonsSetUsualResolutions) {
    Open();
    for (const auto& [button, wanted, shown] : {std::tuple{IDC_RESOLUTION_150, 150.0F, "150.0"},
                                                std::tuple{IDC_RESOLUTION_300, 300.0F, "300.0"},
                                                std::tuple{IDC_RESOLUTION_72, 72.0F, "72.0"}}) {
        Press(mainMap, button);
        EXPECT_EQ(Block().GetFloat("resolution"_param), wanted);
        EXPECT_EQ(TextOf(mainMap, IDC_RESOLUTION), shown);
    }
}

TEST_F(MainRollup, ADerivedNameIsShownAndCanNotBeTyped) {
    Open();
    EXPECT_FALSE(IsEnabled(mainMap, IDC_FILE_NAME));
    EXPECT_TRUE(IsEnabled(mainMap, IDC_FILE_FORMAT));
    EXPECT_EQ(FieldText(), "C:\\r\\frame.psd");
    // Whatever the field is told.
    for (const int code : {EN_SETFOCUS, EN_KILLFOCUS}) {
        SendMessageW(Dialog(mainMap), WM_COMMAND,
                     static_cast<WPARAM>(MAKELONG(IDC_FILE_NAME, code)),
                     reinterpret_cast<LPARAM>(Main(IDC_FILE_NAME)));
    }
    EXPECT_EQ(Filename(), "");
}

TEST_F(MainRollup, WithoutANameTheUserIsToldWhatToDo) {
    Render().output.SetName(_M(""));
    Open();
    EXPECT_EQ(FieldText(), " Please assign a filename in the Render Setup dialog.");
}

TEST_F(MainRollup, ALongDerivedNameIsCutToTheField) {
    const std::string name = "C:\\" + std::string(60, 'W') + "\\frame.exr";
    Render().output.SetName(host::FromUtf8(name));
    Open();
    const std::string shown = FieldText();
    EXPECT_THAT(shown, testing::MatchesRegex("C:.W+\\.\\.\\..frame\\.psd"));
    HWND field = Main(IDC_FILE_NAME);
    HDC device = GetDC(field);
    SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageW(field, WM_GETFONT, 0, 0)));
    SIZE size{};
    const MSTR text = host::FromUtf8(shown);
    GetTextExtentPoint32W(device, text.data(), text.Length(), &size);
    ReleaseDC(field, device);
    RECT client{};
    GetClientRect(field, &client);
    EXPECT_LT(size.cx, client.right);
    EXPECT_GT(size.cx, client.right - 30);
}

TEST_F(MainRollup, AnUnderivedNameIsTheUsersToType) {
    Open();
    Press(mainMap, IDC_MATCH_RENDER_OUTPUT);
    EXPECT_TRUE(IsEnabled(mainMap, IDC_FILE_NAME));
    EXPECT_FALSE(IsEnabled(mainMap, IDC_FILE_FORMAT));
    EXPECT_EQ(FieldText(), "");
    SetText("filename"_param, MSTR(_M("C:\\r\\set.psd")));
    EXPECT_EQ(FieldText(), "C:\\r\\set.psd");

    Set("premultipliedAlpha"_param, TRUE);
    Type(Main(IDC_FILE_NAME), "C:\\r\\typed.psb");
    EXPECT_EQ(Filename(), "C:\\r\\set.psd");
    SetFocus(window);
    EXPECT_EQ(Filename(), "C:\\r\\typed.psb");
    EXPECT_EQ(FieldText(), "C:\\r\\typed.psb");
    // Nobody was told, and it is no step to take back.
    EXPECT_EQ(effect::PSDOutput::lastChanged, "premultipliedAlpha"_param);
    EXPECT_EQ(UndoName(), "Parameter Change");

    Type(Main(IDC_FILE_NAME), "C:\\r\\entered.psd");
    PressKey(Main(IDC_FILE_NAME), VK_RETURN);
    EXPECT_EQ(Filename(), "C:\\r\\entered.psd");
    // Notifications are on again.
    Press(mainMap, IDC_MATCH_RENDER_OUTPUT);
    EXPECT_EQ(FieldText(), "C:\\r\\frame.psd");
}

TEST_F(MainRollup, OfATypedName260UnitsCount) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    const std::string name = "C:\\" + std::string(300, 'a');
    Type(Main(IDC_FILE_NAME), name);
    SetFocus(window);
    EXPECT_EQ(Filename(), name.substr(0, 260));
    EXPECT_EQ(FieldText(), Filename());
}

TEST_F(MainRollup, ATypedNameIsShownInTheFormInWhichItIsKept) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    Type(Main(IDC_FILE_NAME), "near.psd");
    SetFocus(window);
    EXPECT_THAT(Filename(), testing::MatchesRegex(".:.+near\\.psd"));
    EXPECT_EQ(FieldText(), Filename());
    Type(Main(IDC_FILE_NAME), "next.psd");
    PressKey(Main(IDC_FILE_NAME), VK_RETURN);
    EXPECT_THAT(Filename(), testing::MatchesRegex(".:.+next\\.psd"));
    EXPECT_EQ(FieldText(), Filename());
}

TEST_F(MainRollup, PassingThroughTheFieldOfANameLeavesItAsItIs) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    SetFocus(Main(IDC_FILE_NAME));
    EXPECT_EQ(Filename(), "");
    SetFocus(window);
    EXPECT_EQ(Filename(), "");
    EXPECT_EQ(FieldText(), "");
    SetText("filename"_param, MSTR(_M("C:\\r\\set.psd")));
    SetFocus(Main(IDC_FILE_NAME));
    SetFocus(window);
    EXPECT_EQ(Filename(), "C:\\r\\set.psd");
    EXPECT_EQ(FieldText(), "C:\\r\\set.psd");
}

TEST_F(MainRollup, ANameThatIsTakenAwayBecomesThatByDefault) {
    SetFilename("C:\\r\\set.psd");
    Open();
    Type(Main(IDC_FILE_NAME), "");
    PressKey(Main(IDC_FILE_NAME), VK_RETURN);
    EXPECT_EQ(Filename(), host::ToUtf8(Text(File("output") / "Untitled.psd")));
    EXPECT_EQ(FieldText(), Filename());
}

TEST_F(MainRollup, FilesAsksForAFileWhichIsNoLongerDerived) {
    Open();
    AnswerFileDialogs("C:\\r\\chosen.psb");
    Press(mainMap, IDC_FILES);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].title, MSTR(_M("Save Photoshop\u00AE Document As")));
    EXPECT_EQ(asked[0].parent, Dialog(mainMap));
    EXPECT_EQ(Filename(), "C:\\r\\chosen.psb");
    EXPECT_EQ(Value("matchRenderOutputFilename"_param), FALSE);
    EXPECT_FALSE(IsChecked(mainMap, IDC_MATCH_RENDER_OUTPUT));
    EXPECT_EQ(FieldText(), "C:\\r\\chosen.psb");
    EXPECT_TRUE(IsEnabled(mainMap, IDC_FILE_NAME));
}

TEST_F(MainRollup, CancellingTheFileDialogChangesNothing) {
    Open();
    AnswerFileDialogs("");
    Press(mainMap, IDC_FILES);
    EXPECT_EQ(asked.size(), 1U);
    EXPECT_EQ(Filename(), "");
    EXPECT_EQ(Value("matchRenderOutputFilename"_param), TRUE);
}

TEST_F(MainRollup, ARightClickOnFilesOpensTheRendersDocument) {
    Open();
    AnswerFileDialogs("");
    RightClick(Main(IDC_FILES));
    EXPECT_THAT(openedFiles, ElementsAre("C:\\r\\frame.psd"));
    Render().output.SetName(_M(""));
    RightClick(Main(IDC_FILES));
    EXPECT_EQ(openedFiles.size(), 1U);
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(MainRollup, ARightClickOnFilesOpensTheNameThatIsBeingTyped) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    Type(Main(IDC_FILE_NAME), "C:\\r\\typed.psd");
    RightClick(Main(IDC_FILES));
    EXPECT_THAT(openedFiles, ElementsAre("C:\\r\\typed.psd"));
}

TEST_F(MainRollup, ANewEffectAsksForItsFileTenMillisecondsLaterAndOnce) {
    effect->dataVersion = 256;
    AnswerFileDialogs("");
    Open();
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_TRUE(PumpUntil([this] { return !asked.empty(); }));
    Wait(60);
    EXPECT_EQ(asked.size(), 1U);
    Close();
    Open();
    Wait(60);
    EXPECT_EQ(asked.size(), 1U);
}

TEST_F(MainRollup, ANewEffectsTimerPostsAClickAndStops) {
    effect->dataVersion = 256;
    AnswerFileDialogs("");
    Open();
    Tick(mainMap, ui::newEffectTimer.id);
    EXPECT_THAT(asked, IsEmpty());
    PumpMessages();
    EXPECT_EQ(asked.size(), 1U);
    Wait(60);
    EXPECT_EQ(asked.size(), 1U);
}

TEST_F(MainRollup, ALoadedEffectDoesNotAskForAFile) {
    AnswerFileDialogs("");
    Open();
    Wait(100);
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(MainRollup, TheNameFollowsTheHostsRenderSettingsAtOnceAndAtTheNextTick) {
    Open();
    Render().output.SetName(_M("C:\\r\\first.exr"));
    EXPECT_EQ(FieldText(), "C:\\r\\frame.psd");
    host::Broadcast(NOTIFY_RENDPARAM_CHANGED);
    EXPECT_EQ(FieldText(), "C:\\r\\first.psd");
    Render().output.SetName(_M("C:\\r\\second.exr"));
    EXPECT_TRUE(PumpUntil([this] { return FieldText() == "C:\\r\\second.psd"; }));
    // The mark is taken.
    Render().output.SetName(_M("C:\\r\\third.exr"));
    Tick(mainMap, ui::fileNameTimer.id);
    EXPECT_EQ(FieldText(), "C:\\r\\second.psd");
}

TEST_F(MainRollup, ATickLeavesAnUnderivedNameAlone) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    host::Broadcast(NOTIFY_RENDPARAM_CHANGED);
    SetWindowTextW(Main(IDC_FILE_NAME), L"half-ty");
    Tick(mainMap, ui::fileNameTimer.id);
    EXPECT_EQ(FieldText(), "half-ty");
}

TEST_F(MainRollup, ANameThatIsBeingTypedStaysWhateverTheHostTells) {
    Set("matchRenderOutputFilename"_param, FALSE);
    Open();
    SetFocus(Main(IDC_FILE_NAME));
    SetWindowTextW(Main(IDC_FILE_NAME), L"half-ty");
    host::Broadcast(NOTIFY_RENDPARAM_CHANGED);
    Tick(mainMap, ui::fileNameTimer.id);
    EXPECT_EQ(FieldText(), "half-ty");
}

TEST_F(MainRollup, AChangeOfTheDepthsRendererShowsTheDepthAnew) {
    Open();
    CheckRadioButton(Dialog(mainMap), IDC_DEPTH_8, IDC_DEPTH_16, IDC_DEPTH_8);
    host::Broadcast(152, &UseRenderer(Class_ID(1, 2)));
    host::Broadcast(152);
    EXPECT_TRUE(IsChecked(mainMap, IDC_DEPTH_8));
    host::Broadcast(152, &UseRenderer(Class_ID(0x16d416fb, 0x1cdd4da5)));
    EXPECT_FALSE(IsChecked(mainMap, IDC_DEPTH_8));
    EXPECT_TRUE(IsChecked(mainMap, IDC_DEPTH_16));
}

TEST_F(MainRollup, AChangeOfTheHostsGammaShowsTheLayersSettingsAnew) {
    Open();
    EnableWindow(Control(1, IDC_ELEMENT_GAMMA), TRUE);
    host::Broadcast(NOTIFY_RENDPARAM_CHANGED);
    EXPECT_TRUE(IsEnabled(1, IDC_ELEMENT_GAMMA));
    host::Broadcast(143);
    EXPECT_FALSE(IsEnabled(1, IDC_ELEMENT_GAMMA));
}

TEST_F(MainRollup, TheHeaderIsThePictureOfTheHostsScale) {
    for (const auto& [scale, width, height] :
         {std::tuple{1.0F, 326, 30}, std::tuple{1.25F, 434, 38}, std::tuple{1.5F, 488, 43},
          std::tuple{2.0F, 651, 58}, std::tuple{3.0F, 651, 58}}) {
        host::SetUIScaleFactor(scale);
        Open();
        auto* picture = reinterpret_cast<HBITMAP>(
            SendMessageW(Main(IDC_HEADER), STM_GETIMAGE, IMAGE_BITMAP, 0));
        BITMAP info{};
        ASSERT_TRUE(GetObjectW(picture, sizeof info, &info)) << scale;
        EXPECT_EQ(info.bmWidth, width) << scale;
        EXPECT_EQ(info.bmHeight, height) << scale;
        Close();
        EXPECT_FALSE(GetObjectW(picture, sizeof info, &info)) << scale;
    }
}

TEST_F(MainRollup, AtOtherScalesTheHeaderIsEmpty) {
    for (const float scale : {0.75F, 1.1F, 1.75F, 1.99F}) {
        host::SetUIScaleFactor(scale);
        Open();
        EXPECT_EQ(SendMessageW(Main(IDC_HEADER), STM_GETIMAGE, IMAGE_BITMAP, 0), 0) << scale;
        Close();
    }
}

TEST_F(MainRollup, TheZonesOnTheHeaderAreHiddenPlaces) {
    Open();
    for (const auto& [id, x, y, width, height] :
         {std::tuple{IDC_ABOUT_ZONE, 3, 3, 27, 11}, std::tuple{IDC_HELP_ZONE, 185, 3, 23, 10}}) {
        EXPECT_FALSE(IsShown(mainMap, id));
        // Its place, and its size behind.
        RECT wanted{x, y, width, height};
        MapDialogRect(Dialog(mainMap), &wanted);
        RECT area = PlaceOf(Main(id));
        MapWindowPoints(nullptr, Dialog(mainMap), reinterpret_cast<POINT*>(&area), 2);
        EXPECT_EQ(area.left, wanted.left) << id;
        EXPECT_EQ(area.top, wanted.top) << id;
        EXPECT_EQ(area.right - area.left, wanted.right) << id;
        EXPECT_EQ(area.bottom - area.top, wanted.bottom) << id;
    }
}

TEST_F(MainRollup, OverAZoneTheCursorIsTheHand) {
    Open();
    HCURSOR hand = LoadCursorW(nullptr, IDC_HAND);
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    for (const int zone : {IDC_ABOUT_ZONE, IDC_HELP_ZONE}) {
        for (const UINT message : {WM_SETCURSOR, WM_MOUSEMOVE, WM_LBUTTONDOWN}) {
            PointAtMiddleOf(zone);
            SetCursor(arrow);
            EXPECT_EQ(TellMain(message), 1) << zone << ' ' << message;
            EXPECT_EQ(GetCursor(), hand) << zone << ' ' << message;
        }
    }
    const RECT about = PlaceOf(Main(IDC_ABOUT_ZONE));
    // Its sides aren't in it.
    for (const POINT edge :
         {POINT{about.left, about.top + 2}, POINT{about.right, about.top + 2},
          POINT{about.left + 2, about.top}, POINT{about.left + 2, about.bottom}}) {
        PointAt(edge);
        SetCursor(arrow);
        TellMain(WM_MOUSEMOVE);
        EXPECT_EQ(GetCursor(), arrow) << edge.x << ' ' << edge.y;
    }
    PointAt({about.left + 1, about.top + 1});
    EXPECT_EQ(TellMain(WM_SETCURSOR), 1);
    EXPECT_EQ(GetCursor(), hand);
    EXPECT_THAT(openedFiles, IsEmpty());
}

TEST_F(MainRollup, AClickOnHelpOpensTheFileBesideTheLibrary) {
    Open();
    PointAtMiddleOf(IDC_HELP_ZONE);
    TellMain(WM_LBUTTONDOWN);
    EXPECT_THAT(openedFiles, IsEmpty());
    EXPECT_EQ(TellMain(WM_LBUTTONUP), 1);
    const std::filesystem::path library(ui::LibraryFile().data());
    EXPECT_THAT(openedFiles,
                ElementsAre(host::ToUtf8((library.parent_path() / "veltrane.chm").c_str())));
    TellMain(WM_RBUTTONUP);
    EXPECT_EQ(openedFiles.size(), 1U);
}

TEST_F(MainRollup, AClickOnAboutOpensTheBoxOverTheRollups) {
    Open();
    PointAtMiddleOf(IDC_ABOUT_ZONE);
    const InModalLoop loop([] { return FindDialog(L"About"); },
                           [this](HWND dialog) {
                               EXPECT_EQ(GetWindow(dialog, GW_OWNER), window);
                               SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                           });
    EXPECT_EQ(TellMain(WM_LBUTTONUP), 1);
    EXPECT_TRUE(loop.HasActed());
}

TEST_F(MainRollup, ADragThatEndsOverAZoneIsNoClick) {
    Open();
    HWND dialog = Dialog(mainMap);
    const RECT area = PlaceOf(dialog);
    PointAt({area.left + 1, area.bottom - 2});
    TellMain(WM_LBUTTONDOWN);
    EXPECT_EQ(GetCapture(), dialog);
    PointAtMiddleOf(IDC_HELP_ZONE);
    TellMain(WM_LBUTTONUP);
    EXPECT_THAT(openedFiles, IsEmpty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(MainRollup, AdvancedOptionsOpenOverTheRollup) {
    Open();
    const InModalLoop loop([] { return FindDialog(L"veltrane - Advanced Options"); },
                           [this](HWND dialog) {
                               EXPECT_EQ(GetWindow(dialog, GW_OWNER), window);
                               Click(GetDlgItem(dialog, IDC_HIDE_MATTE_LAYERS));
                               Click(GetDlgItem(dialog, IDOK));
                           });
    EnableWindow(Control(1, IDC_ELEMENT_COLOR), TRUE);
    Press(mainMap, IDC_ADVANCED_OPTIONS);
    EXPECT_TRUE(loop.HasActed());
    EXPECT_EQ(Value("matteLayersVisible"_param), FALSE);
    EXPECT_FALSE(IsEnabled(1, IDC_ELEMENT_COLOR)) << "the layers' settings are shown anew";
}

class MainRollupWithVRay : public MainRollup {
  protected:
    static constexpr ParamID force32Bits = 280;

    MainRollupWithVRay() {
        vray = UseRenderer(VRAY_CLASS_ID).GetParamBlock(host::VRAY_BLOCK);
        Render().output.SetName(_M("C:\\r\\frame.png"));
    }

    IParamBlock2* vray = nullptr;
};

constexpr const char* offerBack =
    "VRay currenty always creates a 32-Bits/Channel 3ds Max Framebuffer.\n Do you want to switch "
    "back to a 16-bit Framebuffer?";
constexpr const char* offerOn =
    "VRay will only create a 16-Bits/Channel 3ds Max Framebuffer.\n Do you want to enable the "
    "32-bit (HDR) Framebuffer?";

TEST_F(MainRollupWithVRay, AnotherDepthOffersAnotherFrameBuffer) {
    Open();
    answer = IDYES;
    Press(mainMap, IDC_DEPTH_32);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{0x24, 0, "veltrane", offerOn}));
    EXPECT_EQ(vray->GetInt(force32Bits), TRUE);
    answer = IDNO;
    Press(mainMap, IDC_DEPTH_8);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{0x24, 0, "veltrane", offerBack}));
    EXPECT_EQ(vray->GetInt(force32Bits), TRUE);
    answer = IDYES;
    Press(mainMap, IDC_DEPTH_16);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{0x24, 0, "veltrane", offerBack}));
    EXPECT_EQ(vray->GetInt(force32Bits), FALSE);
}

TEST_F(MainRollupWithVRay, ADepthThatAnUndoBringsIsAskedAboutOnceTheUndoIsOver) {
    Open();
    answer = IDNO;
    Press(mainMap, IDC_DEPTH_32);
    TakeBoxes();
    Host().undo.Undo();
    EXPECT_THAT(TakeBoxes(), IsEmpty()) << "a box runs the host while it restores";
    vray->SetValue(force32Bits, 0, TRUE);
    Tick(mainMap, ui::fileNameTimer.id);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{0x24, 0, "veltrane", offerBack}));
    Tick(mainMap, ui::fileNameTimer.id);
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(MainRollupWithVRay, AnOutputThatHolds32BitsIsNotAskedAbout) {
    Render().output.SetName(_M("C:\\r\\frame.EXR"));
    Open();
    Press(mainMap, IDC_DEPTH_32);
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(MainRollupWithVRay, TheDepthOfAnEffectThatIsNotShownIsNotAskedAbout) {
    Open();
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    other->pblock->SetValue("bitDepth"_param, 0, 32);
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    EXPECT_TRUE(IsChecked(mainMap, IDC_DEPTH_16));
}

TEST_F(MainRollupWithVRay, NobodyIsAskedWhileThePanelIsClosed) {
    Set("bitDepth"_param, 32);
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    Open();
    Close();
    Set("bitDepth"_param, 8);
    Set("bitDepth"_param, 32);
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(MainRollup, ShowsAnotherEffectFromTheMomentItIsTold) {
    Open();
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    other->pblock->SetValue("matchRenderOutputFilename"_param, 0, FALSE);
    other->pblock->SetValue("filename"_param, 0, _M("C:\\r\\other.psd"));
    other->pblock->SetValue("bitDepth"_param, 0, 32);
    dialogs->SetThing(other);
    EXPECT_EQ(FieldText(), "C:\\r\\other.psd");
    EXPECT_TRUE(IsEnabled(mainMap, IDC_FILE_NAME));
    EXPECT_FALSE(IsEnabled(mainMap, IDC_FILE_FORMAT));
    EXPECT_TRUE(IsChecked(mainMap, IDC_DEPTH_32));
    Press(mainMap, IDC_RESOLUTION_300);
    EXPECT_EQ(other->pblock->GetFloat("resolution"_param), 300.0F);
    EXPECT_EQ(Block().GetFloat("resolution"_param), 72.0F);
}

}  // namespace
