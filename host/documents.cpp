#include "host/documents.h"

#include <algorithm>
#include <array>
#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

#include <notify.h>

#include "host/application.h"
#include "host/build_scene.h"
#include "host/capture_scene.h"
#include "host/exact_text.h"
#include "host/input_error.h"
#include "host/new_names.h"
#include "host/scene_text_reader.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "host/whole_file.h"

namespace host {
namespace {

// What goes when another scene takes its place, in the order in which the one refers to the other:
// the effects are destroyed first.
struct Document {
    Scene::Contents scene;
    std::array<std::vector<Owned<RenderElement>>, 2> elements;
    std::vector<Owned<Effect>> effects;
};

Document TakeDocument() {
    Application& app = App();
    Document document{app.scene.TakeContents(), {}, std::exchange(app.effects, {})};
    std::transform(app.elements.begin(), app.elements.end(), document.elements.begin(),
                   [](RenderElementManager& manager) { return manager.TakeAll(); });
    return document;
}

void PutBack(Document document) {
    Application& app = App();
    app.scene.PutBack(std::move(document.scene));
    for (std::size_t i = 0; i < document.elements.size(); ++i)
        app.elements[i].PutBack(std::move(document.elements[i]));
    app.effects = std::exchange(document.effects, {});
}

// How the scene is rendered.
struct RenderSetup {
    RenderSettings settings;
    int frameRate = Settings().frameRate;
    Owned<Renderer> renderer;
};

// Leaves what an application starts with.
RenderSetup TakeRenderSetup() {
    Application& app = App();
    return {std::exchange(app.settings.render, {}),
            std::exchange(app.settings.frameRate, Settings().frameRate),
            std::exchange(app.renderer, nullptr)};
}

void PutBack(RenderSetup setup) {
    Application& app = App();
    app.settings.render = std::move(setup.settings);
    app.settings.frameRate = setup.frameRate;
    app.renderer = std::move(setup.renderer);
}

// The steps go first: they look at what goes.
void Destroy(Document document) {
    App().undo.Clear();
    document.effects.clear();
}

void Empty() {
    Destroy(TakeDocument());
    Settings& settings = App().settings;
    settings.time = 0;
    settings.sceneFileName = MSTR();
    settings.saveRequired = false;
}

// A process on a file, for as long as this lives.
class FileProcess {
  public:
    FileProcess(int begin, int end, const std::string& path) : end_(end), path_(FromUtf8(path)) {
        Tell(begin);
    }
    ~FileProcess() { Tell(end_); }
    FileProcess(const FileProcess&) = delete;
    FileProcess& operator=(const FileProcess&) = delete;

    void Tell(int code) const { Broadcast(code, const_cast<MCHAR*>(path_.data())); }

  private:
    int end_;
    MSTR path_;
};

SceneDescription ReadChecked(const std::string& path) {
    SceneDescription description = ReadSceneFile(path);
    CheckScene(description, App().classes);
    return description;
}

// Listeners hear of the file; the old effects must not take its sets for new ones of theirs.
void ReplaceScene(const SceneDescription& description, const std::function<void()>& complete) {
    const Notifications::Silence silence(App().notifications);
    const UndoStack::Pause pause(App().undo);
    Document before = TakeDocument();
    RenderSetup setup = TakeRenderSetup();
    try {
        BuildScene(description);
        if (complete) complete();
    } catch (...) {
        {
            Document begun = TakeDocument();
            begun.effects.clear();
        }
        PutBack(std::move(before));
        PutBack(std::move(setup));
        throw;
    }
    Destroy(std::move(before));
}

MSTR NameWithoutFolder(const std::string& path) {
#ifdef _WIN32
    constexpr const char* separators = "/\\";
#else
    constexpr const char* separators = "/";
#endif
    const std::size_t folder = path.find_last_of(separators);
    return FromUtf8(folder == std::string::npos ? path : path.substr(folder + 1));
}

void EndOpening(const FileProcess& process, const std::string& path) {
    Settings& settings = App().settings;
    settings.time = 0;
    settings.sceneFileName = NameWithoutFolder(path);
    settings.saveRequired = false;
    Broadcast(NOTIFY_RENDPARAM_CHANGED);
    process.Tell(NOTIFY_FILE_POST_OPEN);
}

std::string SceneText(const std::string& path) {
    SceneDescription description;
    try {
        description = CaptureScene();
    } catch (const InputError& fault) {
        throw InputError(path + ": " + fault.what());
    }
    description.path = path;
    return WriteScene(description);
}

void GiveNewNames(SceneDescription& description) {
    const Scene& scene = App().scene;
    const auto rename = [](auto& list, const auto& isTaken) {
        NewNames names(isTaken);
        for (const auto& each : list)
            names.Avoid(FromExactText(each.name));
        for (auto& each : list)
            each.name = ToExactText(names.For(FromExactText(each.name)));
    };
    rename(description.nodes, [&](const MSTR& name) { return scene.FindNode(name) != nullptr; });
    rename(description.layers, [&](const MSTR& name) { return scene.FindLayer(name) != nullptr; });
    rename(description.selectionSets, [&](const MSTR& name) {
        const auto& sets = scene.SelectionSets();
        return std::any_of(sets.begin(), sets.end(),
                           [&](const SelectionSet& set) { return set.name == name; });
    });
}

// Those that nodes of the scene have are given anew, by the next render.
void LeaveTakenRenderIDs(SceneDescription& description) {
    const Scene& scene = App().scene;
    std::unordered_set<int> taken;
    for (int i = 0; i < scene.NumNodes(); ++i)
        taken.insert(scene.GetNode(i)->GetRenderID());
    for (SceneNode& node : description.nodes) {
        if (node.id && taken.contains(*node.id)) node.id.reset();
    }
}

}  // namespace

void NewScene() {
    Empty();
    Broadcast(NOTIFY_RENDPARAM_CHANGED);
    Broadcast(NOTIFY_SYSTEM_POST_NEW);
}

void ResetScene() {
    Empty();
    TakeRenderSetup();
    Broadcast(NOTIFY_RENDPARAM_CHANGED);
    Broadcast(NOTIFY_SYSTEM_POST_RESET);
}

void OpenScene(const std::string& path) {
    const FileProcess process(NOTIFY_FILE_PRE_OPEN_PROCESS, NOTIFY_FILE_POST_OPEN_PROCESS, path);
    ReplaceScene(ReadChecked(path), {});
    EndOpening(process, path);
}

void OpenScene(const SceneDescription& scene, const std::function<void()>& complete) {
    const FileProcess process(NOTIFY_FILE_PRE_OPEN_PROCESS, NOTIFY_FILE_POST_OPEN_PROCESS,
                              scene.path);
    CheckScene(scene, App().classes);
    ReplaceScene(scene, complete);
    EndOpening(process, scene.path);
}

void MergeScene(const std::string& path) {
    Broadcast(NOTIFY_FILE_PRE_MERGE);
    SceneDescription description = ReadChecked(path);
    GiveNewNames(description);
    LeaveTakenRenderIDs(description);
    description.render = {};
    {
        const UndoStack::Pause pause(App().undo);
        BuildScene(description);
    }
    App().undo.Clear();
    App().settings.saveRequired = true;
    Broadcast(NOTIFY_FILE_POST_MERGE);
}

void SaveScene(const std::string& path) {
    const FileProcess process(NOTIFY_FILE_PRE_SAVE_PROCESS, NOTIFY_FILE_POST_SAVE_PROCESS, path);
    ReplaceWholeFile(path, SceneText(path));
    Settings& settings = App().settings;
    settings.sceneFileName = NameWithoutFolder(path);
    settings.saveRequired = false;
    process.Tell(NOTIFY_FILE_POST_SAVE);
}

}  // namespace host
