#include "command/win32/panel_scene.h"

#include <maxapi.h>

#include "command/apply_parameters.h"
#include "command/beauty.h"
#include "command/layer_settings.h"
#include "command/native_path.h"
#include "command/passes.h"
#include "command/render_file.h"
#include "command/scene_file.h"
#include "command/temporary_folder.h"
#include "host/application.h"
#include "host/capture_scene.h"
#include "host/documents.h"
#include "host/render_settings_edit.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "host/whole_file.h"

namespace command {
namespace {

std::string SceneText() {
    return host::WriteScene(host::CaptureScene());
}

std::vector<host::Node*> NodesInOrder() {
    const host::Scene& scene = host::App().scene;
    std::vector<host::Node*> nodes;
    for (int i = 0; i < scene.NumNodes(); ++i)
        nodes.push_back(scene.GetNode(i));
    return nodes;
}

}  // namespace

PanelScene::PanelScene(const std::filesystem::path& libraryFile) : library(libraryFile) {
    for (ClassDesc* each : library.Classes())
        host::App().classes.Add(each);
    MakeSureOfEffect();
    NoteSaved();
}

Effect& PanelScene::GetEffect() const {
    const Class_ID wanted = library.ClassAt(0)->ClassID();
    for (const auto& effect : host::App().effects) {
        if (effect->ClassID() == wanted) return *effect;
    }
    // MakeSureOfEffect made one.
    return *host::App().effects.front();
}

bool PanelScene::MakeSureOfEffect() {
    ClassDesc* wanted = library.ClassAt(0);
    for (const auto& effect : host::App().effects) {
        if (effect->ClassID() == wanted->ClassID()) return false;
    }
    host::App().effects.emplace_back(static_cast<Effect*>(wanted->Create()));
    return true;
}

void PanelScene::NoteSaved() {
    saved = SceneText();
}

bool PanelScene::IsChanged() const {
    return SceneText() != saved;
}

void PanelScene::New() {
    host::NewScene();
    MakeSureOfEffect();
    file.clear();
    NoteSaved();
}

// Files that people write name settings instead of saving an effect.
void PanelScene::ApplySettingsByName(const SceneDescription& scene) {
    IParamBlock2& block = *GetEffect().GetParamBlock(0);
    ApplyParameters(scene, NodesInOrder(), block);
    plugin::SyncRenderElements(GetEffect());
    host::RenderElementManager& elements = host::App().elements[RS_Production];
    for (int i = 0; i < elements.NumRenderElements(); ++i) {
        const host::RenderElement* element = elements.GetRenderElement(i);
        IParamBlock2* layer = LayerSettingsOf(block, element);
        const std::string name = host::ToUtf8(element->ElementName());
        if (layer) ApplyLayerSettings(scene.elementSettings, name, *layer);
    }
}

// Its effect comes from a file then, and isn't one that the user has just made, whom the effect
// would ask for a file name first of all.
void PanelScene::Reopen() {
    const TemporaryFolder folder;
    if (folder.Path().empty()) return;
    const std::string copy = folder.Path() + "/scene.json";
    WriteCopy(copy);
    host::OpenScene(copy);
}

void PanelScene::Open(const std::string& path) {
    const SceneDescription scene = ReadSceneFile(path);
    host::OpenScene(path);
    const bool isNew = MakeSureOfEffect();
    ApplySettingsByName(scene);
    if (isNew) Reopen();
    file = path;
    NoteSaved();
}

void PanelScene::Save(const std::string& path) {
    host::SaveScene(path);
    file = path;
    NoteSaved();
}

void PanelScene::WriteCopy(const std::string& path) {
    host::ReplaceWholeFile(path, SceneText());
}

void PanelScene::UseRenderFile(const std::string& path) {
    const auto render = OpenRenderFile(path);
    const PassPlan plan =
        PlanPasses(render->GetDescription(), ChooseBeauty(render->GetDescription()));
    host::RenderElementManager& elements = host::App().elements[RS_Production];
    for (const PassElement& pass : plan.elements) {
        const MSTR name = host::FromUtf8(pass.name);
        if (!elements.Find(name)) elements.Add(pass.classID, name);
    }
    // The file is what the scene is rendered to.
    const std::filesystem::path whole = std::filesystem::absolute(Native(path));
    host::EditRenderSettings([&whole](host::RenderSettings& settings) {
        settings.output.SetName(host::FromNativePath(whole).data());
        settings.saveFile = TRUE;
    });
}

std::string PanelScene::RenderFile() const {
    const std::string output = host::ToUtf8(host::App().settings.render.output.Name());
    std::error_code none;
    return std::filesystem::is_regular_file(Native(output), none) ? output : std::string();
}

}  // namespace command
