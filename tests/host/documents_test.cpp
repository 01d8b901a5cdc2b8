#include "host/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>
#include <notify.h>
#include <plugapi.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "host/application.h"
#include "host/capture_scene.h"
#include "host/host_renderer.h"
#include "host/input_error.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "tests/host/fault_text.h"
#include "tests/host/full_scene.h"
#include "tests/host/temporary_folder.h"

namespace {

using host::App;
using testing::ElementsAre;
using testing::IsEmpty;

class Documents : public testing::Test {
  protected:
    Documents() {
        host::ResetApplication();
        AddClasses();
    }
    ~Documents() override {
        onHear = nullptr;
        host::ResetApplication();
    }
    void AddClasses() {
        App().classes.Add(&sample);
        App().classes.Add(&effect);
    }

    std::string Path(const char* name) const { return (folder.path / name).string(); }
    static std::string Bytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string FileOf(const std::string& text, const char* name = "file.json") const {
        std::ofstream(Path(name), std::ios::binary) << text;
        return Path(name);
    }
    // A file of the whole scene, and that scene as the application's text.
    std::string FullFile() const { return FileOf(host::WriteScene(FullScene()), "full.json"); }
    // All that a file would keep.
    static std::string State() { return host::WriteScene(host::CaptureScene()); }
    static std::string OpenFault(const std::string& path) {
        return FaultText<host::InputError>([&] { host::OpenScene(path); });
    }
    static void AddContent() {
        host::Scene& scene = App().scene;
        host::Node& box = scene.AddNode(_M("Box"));
        box.SetLayer(&scene.AddLayer(_M("Layer")));
        scene.AddSelectionSet(_M("Set"), {&box});
        App().elements[RS_Production].Add(Class_ID(4, 0), _M("Element"));
        App().effects.emplace_back(new ReferringEffect({21, 22}));
        App().effects.back()->ReplaceReference(0, &box);
    }

    void Listen(std::vector<int> codes) {
        for (const int code : codes)
            RegisterNotification(Hear, this, code);
    }
    static std::vector<int> All() {
        return {NOTIFY_SYSTEM_POST_RESET,      NOTIFY_SYSTEM_POST_NEW,
                NOTIFY_FILE_POST_OPEN,         NOTIFY_FILE_POST_SAVE,
                NOTIFY_FILE_PRE_MERGE,         NOTIFY_FILE_POST_MERGE,
                NOTIFY_RENDPARAM_CHANGED,      NOTIFY_FILE_POST_OPEN_PROCESS,
                NOTIFY_FILE_PRE_OPEN_PROCESS,  NOTIFY_FILE_PRE_SAVE_PROCESS,
                NOTIFY_FILE_POST_SAVE_PROCESS, NOTIFY_LAYER_CREATED,
                NOTIFY_LAYER_DELETED,          NOTIFY_NAMED_SEL_SET_CREATED,
                NOTIFY_NAMED_SEL_SET_DELETED,  NOTIFY_NAMED_SEL_SET_PRE_MODIFY};
    }
    std::vector<std::string> Heard() { return std::exchange(heard, {}); }
    static void Hear(void* param, NotifyInfo* info) {
        auto& self = *static_cast<Documents*>(param);
        std::string text = std::to_string(info->intcode);
        const bool isLayer =
            info->intcode == NOTIFY_LAYER_CREATED || info->intcode == NOTIFY_LAYER_DELETED;
        if (info->callParam && !isLayer) {
            text.append(" ").append(host::ToUtf8(static_cast<const MCHAR*>(info->callParam)));
        }
        self.heard.push_back(text);
        if (self.onHear) self.onHear(info->intcode);
    }

    TemporaryFolder folder;
    SavedSampleDesc sample;
    ReferringEffectDesc effect;
    std::vector<std::string> heard;
    std::function<void(int code)> onHear;
};

// New and reset

TEST_F(Documents, ANewSceneIsEmptyAndHasNoFileNorSteps) {
    AddContent();
    host::Settings& settings = App().settings;
    settings.sceneFileName = _M("old.json");
    settings.saveRequired = true;
    settings.time = 480;
    settings.frameRate = 25;
    settings.render.width = 17;
    theHold.Begin();
    App().scene.Remove(*App().scene.FindNode(_M("Box")));
    theHold.Accept(_M("Step"));
    theHold.Begin();
    Listen(All());
    onHear = [](int) { EXPECT_EQ(App().scene.NumNodes(), 0); };
    host::NewScene();
    EXPECT_THAT(Heard(), ElementsAre("35", "8"));
    EXPECT_THAT(App().scene.Layers(), IsEmpty());
    EXPECT_THAT(App().scene.SelectionSets(), IsEmpty());
    EXPECT_EQ(App().elements[RS_Production].NumRenderElements(), 0);
    EXPECT_THAT(App().effects, IsEmpty());
    EXPECT_EQ(settings.sceneFileName, MSTR());
    EXPECT_FALSE(settings.saveRequired);
    EXPECT_EQ(settings.time, 0);
    EXPECT_FALSE(App().undo.CanUndo());
    EXPECT_FALSE(theHold.Holding());
    EXPECT_EQ(settings.frameRate, 25) << "a setting of the application";
    EXPECT_EQ(settings.render.width, 17);
}

TEST_F(Documents, ResetPutsTheRendersSettingsBackToo) {
    AddContent();
    App().settings.frameRate = 25;
    App().settings.render.width = 17;
    App().settings.quiet = true;
    App().log.LogEntry(SYSLOG_INFO, NO_DIALOG, _M(""), _M("kept"));
    Listen(All());
    host::ResetScene();
    EXPECT_THAT(Heard(), ElementsAre("35", "6"));
    EXPECT_EQ(App().scene.NumNodes(), 0);
    EXPECT_THAT(App().effects, IsEmpty());
    EXPECT_EQ(App().settings.frameRate, 30);
    EXPECT_EQ(App().settings.render.width, 640);
    EXPECT_TRUE(App().settings.quiet);
    EXPECT_EQ(App().log.Entries().size(), 1U);
    EXPECT_EQ(App().classes.Classes().size(), 2U);
}

TEST_F(Documents, EffectsFindTheSceneUntilTheyAreGone) {
    class Parting : public ReferringEffect {
      public:
        Parting(host::Node& node, std::string& last)
            : ReferringEffect({21, 22}), node_(node), last_(last) {}
        ~Parting() override { last_ = host::ToUtf8(node_.GetName()); }

      private:
        host::Node& node_;
        std::string& last_;
    };
    std::string last;
    App().effects.emplace_back(new Parting(App().scene.AddNode(_M("Box")), last));
    host::NewScene();
    EXPECT_EQ(last, "Box");
}

// Save and open

TEST_F(Documents, WhatIsSavedIsOpenedAsItWas) {
    host::OpenScene(FullFile());
    const std::string state = State();
    host::SaveScene(Path("again.json"));
    EXPECT_EQ(Bytes(Path("again.json")), state);
    host::NewScene();
    EXPECT_NE(State(), state);
    host::OpenScene(Path("again.json"));
    EXPECT_EQ(State(), state);
}

TEST_F(Documents, OpeningReplacesTheSceneAndForgetsTheSteps) {
    AddContent();
    host::TargetReference box(App().scene.FindNode(_M("Box")));
    theHold.Begin();
    App().scene.RemoveSelectionSet(_M("Set"));
    theHold.Accept(_M("Step"));
    App().settings.saveRequired = true;
    App().settings.time = 480;
    host::OpenScene(FullFile());
    EXPECT_EQ(box.Get(), nullptr);
    EXPECT_EQ(App().scene.NumNodes(), 5);
    EXPECT_EQ(App().scene.SelectionSets().size(), 2U);
    EXPECT_EQ(App().elements[RS_Production].NumRenderElements(), 2);
    EXPECT_EQ(App().elements[RS_Draft].NumRenderElements(), 1);
    EXPECT_EQ(App().effects.size(), 2U);
    EXPECT_FALSE(App().undo.CanUndo());
    EXPECT_EQ(App().settings.sceneFileName, MSTR(_M("full.json")));
    EXPECT_FALSE(App().settings.saveRequired);
    EXPECT_EQ(App().settings.time, 0);
}

TEST_F(Documents, OpeningKeepsNothingOfHowTheSceneBeforeWasRendered) {
    App().settings.render.width = 17;
    App().settings.render.saveFile = TRUE;
    App().settings.render.output.SetName(_M("old.exr"));
    App().settings.frameRate = 25;
    App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    host::OpenScene(FileOf(R"({"veltrane": 1, "render": {"hidden": true}})"));
    const host::RenderSettings& render = App().settings.render;
    EXPECT_EQ(render.width, 640);
    EXPECT_FALSE(render.saveFile);
    EXPECT_EQ(MSTR(App().settings.render.output.Name()), MSTR());
    EXPECT_TRUE(render.hidden);
    EXPECT_EQ(App().settings.frameRate, 30);
    EXPECT_EQ(App().renderer.get(), nullptr);
}

TEST_F(Documents, ASceneThatWasReadAlreadyOpensUnderItsPath) {
    host::SceneDescription scene = FullScene();
    scene.path = Path("full.json");
    Listen(All());
    bool completed = false;
    host::OpenScene(scene, [&] {
        completed = true;
        EXPECT_EQ(App().scene.NumNodes(), 5);
        EXPECT_EQ(Heard().size(), 1U) << "nobody is told yet";
        App().scene.AddLayer(_M("More"));
    });
    EXPECT_TRUE(completed);
    EXPECT_THAT(Heard(), ElementsAre("35", "10 " + scene.path, "139 " + scene.path));
    EXPECT_EQ(App().settings.sceneFileName, MSTR(_M("full.json")));
    EXPECT_NE(App().scene.FindLayer(_M("More")), nullptr);
    EXPECT_FALSE(App().undo.CanUndo());
}

TEST_F(Documents, WhatFailsWhileASceneIsCompletedLeavesTheOldOne) {
    AddContent();
    App().settings.render.width = 17;
    App().settings.frameRate = 25;
    App().settings.render.output.SetName(_M("old.exr"));
    auto* renderer = new host::HostRenderer(VRAY_CLASS_ID);
    App().renderer.reset(renderer);
    theHold.Begin();
    App().scene.AddNode(_M("Ball"));
    theHold.Accept(_M("Step"));
    const std::string before = State();
    const Effect* oldEffect = App().effects[0].get();
    host::SceneDescription scene = FullScene();
    scene.path = Path("full.json");
    const auto fail = [&](bool nested) {
        host::OpenScene(scene, [&] {
            App().effects.emplace_back(new ReferringEffect({21, 22}));
            if (nested) host::OpenScene(Path("none.json"));
            throw host::InputError("refused");
        });
    };
    EXPECT_THROW(fail(false), host::InputError);
    EXPECT_THROW(fail(true), host::InputError);
    EXPECT_EQ(State(), before);
    EXPECT_EQ(App().effects[0].get(), oldEffect);
    EXPECT_EQ(App().renderer.get(), renderer);
    EXPECT_EQ(App().settings.frameRate, 25);
    EXPECT_EQ(sample.living, 0);
    EXPECT_TRUE(App().undo.Undo());
    EXPECT_EQ(App().scene.NumNodes(), 1);
}

TEST_F(Documents, OpeningIsToldAndNothingThatComesWithTheFile) {
    AddContent();
    const std::string path = FullFile();
    Listen(All());
    onHear = [](int code) {
        EXPECT_EQ(App().scene.NumNodes(), code == NOTIFY_FILE_PRE_OPEN_PROCESS ? 1 : 5);
    };
    host::OpenScene(path);
    EXPECT_THAT(Heard(), ElementsAre("173 " + path, "35", "10 " + path, "139 " + path));
}

TEST_F(Documents, PostLoadCallbacksRunBeforeTheFileIsOpen) {
    class Callback : public PostLoadCallback {
      public:
        explicit Callback(std::vector<std::string>& heard) : heard_(heard) {}
        void proc(ILoad*) override {
            heard_.push_back("callback");
            delete this;
        }

      private:
        std::vector<std::string>& heard_;
    };
    sample.onLoad = [&](SavedSample&, ILoad* iload) {
        iload->RegisterPostLoadCallback(new Callback(heard));
        return IO_OK;
    };
    const std::string path = FullFile();
    Listen({NOTIFY_FILE_PRE_OPEN_PROCESS, NOTIFY_FILE_POST_OPEN, NOTIFY_FILE_POST_OPEN_PROCESS});
    host::OpenScene(path);
    EXPECT_THAT(Heard(), ElementsAre("173 " + path, "callback", "10 " + path, "139 " + path));
}

class Unreadable : public Documents {
  protected:
    // Opens it over a scene, which must stay as it is, and merges it into it.
    std::string Fault(const std::string& path) {
        AddContent();
        theHold.Begin();
        App().scene.AddNode(_M("Ball"));
        theHold.Accept(_M("Step"));
        App().settings.saveRequired = true;
        App().settings.sceneFileName = _M("old.json");
        const std::string before = State();
        host::Node* box = App().scene.FindNode(_M("Box"));
        Effect* oldEffect = App().effects[0].get();
        Listen(All());
        const std::string fault = OpenFault(path);
        EXPECT_THAT(Heard(), ElementsAre("173 " + path, "139 " + path));
        EXPECT_EQ(FaultText<host::InputError>([&] { host::MergeScene(path); }), fault);
        const std::vector<std::string> ofMerge = Heard();
        EXPECT_EQ(ofMerge.front(), "11");
        EXPECT_THAT(ofMerge, testing::Not(testing::Contains("12")));
        EXPECT_EQ(State(), before);
        EXPECT_EQ(App().scene.FindNode(_M("Box")), box);
        EXPECT_TRUE(box->IsInScene());
        EXPECT_EQ(App().effects[0].get(), oldEffect);
        EXPECT_EQ(static_cast<ReferringEffect*>(oldEffect)->target, box);
        EXPECT_EQ(MSTR(App().elements[RS_Production].GetRenderElement(0)->ElementName()),
                  MSTR(_M("Element")));
        EXPECT_EQ(App().settings.sceneFileName, MSTR(_M("old.json")));
        EXPECT_TRUE(App().settings.saveRequired);
        EXPECT_TRUE(App().undo.Undo());
        EXPECT_EQ(App().scene.NumNodes(), 1);
        EXPECT_EQ(sample.living, 0);
        return fault;
    }
};

TEST_F(Unreadable, AMissingFileLeavesTheSceneAsItWas) {
    const std::string path = Path("no.json");
    EXPECT_EQ(Fault(path), path + ": no such file; check the path");
}

TEST_F(Unreadable, AnObjectOfAnUnknownClassLeavesTheSceneAsItWas) {
    host::SceneDescription scene = FullScene();
    scene.objects[0].classID = Class_ID(99, 98);
    const std::string path = FileOf(host::WriteScene(scene));
    EXPECT_THAT(Fault(path), testing::StartsWith(path + ": objects[0]: "));
}

TEST_F(Unreadable, AFileThatEndsTooEarlyLeavesTheSceneAsItWas) {
    const std::string text = host::WriteScene(FullScene());
    const std::string path = FileOf(text.substr(0, text.size() / 2));
    EXPECT_THAT(Fault(path), testing::StartsWith(path + ": line "));
}

TEST_F(Unreadable, AnObjectThatDoesNotLoadLeavesTheSceneAsItWas) {
    sample.onLoad = [](SavedSample&, ILoad*) { return IO_ERROR; };
    const std::string path = FullFile();
    EXPECT_THAT(Fault(path), testing::StartsWith(path + ": "));
}

TEST_F(Documents, SavingIsToldAndNamesTheScene) {
    AddContent();
    App().settings.saveRequired = true;
    Listen(All());
    const std::string path = Path("a.json");
    onHear = [&](int code) {
        EXPECT_EQ(std::filesystem::exists(path), code != NOTIFY_FILE_PRE_SAVE_PROCESS);
    };
    host::SaveScene(path);
    EXPECT_THAT(Heard(), ElementsAre("174 " + path, "14 " + path, "175 " + path));
    EXPECT_FALSE(App().settings.saveRequired);
    EXPECT_EQ(App().settings.sceneFileName, MSTR(_M("a.json")));
    EXPECT_EQ(Bytes(path), State());
}

TEST_F(Documents, SavingKeepsTheSteps) {
    theHold.Begin();
    App().scene.AddNode(_M("a"));
    theHold.Accept(_M("Step"));
    host::SaveScene(Path("a.json"));
    EXPECT_TRUE(App().undo.Undo());
}

TEST_F(Documents, WhatUndoStepsHoldIsNotSaved) {
    host::Node& node = App().scene.AddNode(_M("a"));
    theHold.Begin();
    App().scene.Remove(node);
    theHold.Accept(_M("Step"));
    host::SaveScene(Path("a.json"));
    host::OpenScene(Path("a.json"));
    EXPECT_EQ(App().scene.NumNodes(), 0);
}

TEST_F(Documents, ASaveThatFailsIsToldAndChangesNothing) {
    AddContent();
    App().settings.saveRequired = true;
    Listen(All());
    const std::string path = Path("no/a.json");
    const std::string fault = FaultText<host::InputError>([&] { host::SaveScene(path); });
    EXPECT_EQ(fault, path +
                         ": cannot be written (No such file or directory); create its folder first "
                         "or choose another");
    EXPECT_THAT(Heard(), ElementsAre("174 " + path, "175 " + path));
    EXPECT_TRUE(App().settings.saveRequired);
    EXPECT_EQ(App().settings.sceneFileName, MSTR());
}

TEST_F(Documents, AnObjectThatCannotBeSavedLeavesTheOldFile) {
    host::OpenScene(FullFile());
    const std::string before = Bytes(Path("full.json"));
    sample.onSave = [](SavedSample&, ISave*) { return IO_ERROR; };
    const std::string path = Path("full.json");
    EXPECT_THAT(FaultText<host::InputError>([&] { host::SaveScene(path); }),
                testing::StartsWith(path + ": "));
    EXPECT_EQ(Bytes(path), before);
}

// Merge

TEST_F(Documents, MergingAddsWhatIsInTheFileUnderFreeNames) {
    AddContent();
    host::SaveScene(Path("a.json"));
    App().settings.render.width = 17;
    theHold.Begin();
    App().scene.AddNode(_M("Ball"));
    theHold.Accept(_M("Step"));
    Listen(All());
    host::MergeScene(Path("a.json"));
    EXPECT_THAT(Heard(), ElementsAre("11", "148", "184 Set001", "35", "35", "12"))
        << "an element comes, and is switched on or off";
    host::Scene& scene = App().scene;
    ASSERT_EQ(scene.NumNodes(), 3);
    host::Node* box = scene.FindNode(_M("Box001"));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->GetLayer(), scene.FindLayer(_M("Layer001")));
    ASSERT_EQ(scene.SelectionSets().size(), 2U);
    EXPECT_EQ(scene.SelectionSets()[0].nodes[0], scene.FindNode(_M("Box"))) << "it is as it was";
    EXPECT_EQ(scene.SelectionSets()[1].name, MSTR(_M("Set001")));
    EXPECT_THAT(scene.SelectionSets()[1].nodes, ElementsAre(box));
    EXPECT_EQ(App().elements[RS_Production].NumRenderElements(), 2);
    ASSERT_EQ(App().effects.size(), 2U);
    EXPECT_EQ(static_cast<ReferringEffect*>(App().effects[1].get())->target, box);
    EXPECT_EQ(App().settings.render.width, 17) << "settings aren't merged";
    EXPECT_TRUE(App().settings.saveRequired);
    EXPECT_EQ(App().settings.sceneFileName, MSTR(_M("a.json"))) << "the scene's own";
    EXPECT_FALSE(App().undo.CanUndo());
}

TEST_F(Documents, MergedNodesHaveRenderIDsOfTheirOwn) {
    host::Scene& scene = App().scene;
    scene.AddNode(_M("a")).SetRenderID(1);
    scene.AddNode(_M("b"));
    host::MergeScene(FileOf(R"({"veltrane": 1, "nodes": [
        {"name": "c", "id": 1}, {"name": "d", "id": 0}, {"name": "e", "id": 7}]})"));
    scene.AssignRenderIDs();
    const auto id = [&](const MCHAR* name) { return scene.FindNode(name)->GetRenderID(); };
    EXPECT_EQ(id(_M("a")), 1);
    EXPECT_EQ(id(_M("b")), 2);
    EXPECT_EQ(id(_M("c")), 3) << "its number was taken";
    EXPECT_EQ(id(_M("d")), 0);
    EXPECT_EQ(id(_M("e")), 7);
}

TEST_F(Documents, AFileThatIsMergedIntoItsOwnSceneSharesNoRenderID) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c")})
        App().scene.AddNode(name);
    App().scene.AssignRenderIDs();
    host::SaveScene(Path("a.json"));
    host::MergeScene(Path("a.json"));
    App().scene.AssignRenderIDs();
    std::vector<int> ids;
    for (int i = 0; i < App().scene.NumNodes(); ++i)
        ids.push_back(App().scene.GetNode(i)->GetRenderID());
    EXPECT_THAT(ids, ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(Documents, MergingLeavesTheRenderer) {
    host::SaveScene(Path("a.json"));
    auto* renderer = new host::HostRenderer(VRAY_CLASS_ID);
    App().renderer.reset(renderer);
    host::MergeScene(Path("a.json"));
    EXPECT_EQ(App().renderer.get(), renderer);
    host::OpenScene(Path("a.json"));
    EXPECT_FALSE(App().renderer);
}

TEST_F(Documents, MergedNamesThatAreFreeStay) {
    const std::string path =
        FileOf(R"({"veltrane": 1, "nodes": [{"name": "Box"}, {"name": "Box001"}]})");
    App().scene.AddNode(_M("Box"));
    host::MergeScene(path);
    EXPECT_NE(App().scene.FindNode(_M("Box001")), nullptr);
    EXPECT_NE(App().scene.FindNode(_M("Box002")), nullptr);
    EXPECT_EQ(App().scene.NumNodes(), 3);
}

}  // namespace
