#include "command/win32/panel_scene.h"

#include <maxapi.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "command/apply_parameters.h"
#include "command/beauty.h"
#include "command/failure.h"
#include "command/frame_elements.h"
#include "command/layer_settings.h"
#include "command/native_path.h"
#include "command/passes.h"
#include "command/render_file.h"
#include "command/scene_file.h"
#include "command/session.h"
#include "command/set_up_renderer.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/capture_scene.h"
#include "host/documents.h"
#include "host/render_settings_edit.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "host/whole_file.h"
#include "plugin/entry.h"

namespace command {
namespace {

std::string SceneText() {
    return host::WriteScene(host::CaptureScene());
}

std::vector<host::Node*> NodesInOrder() {
    const host::Scene& scene = host::App().scene;
    std::vector<host::Node*> nodes;
    nodes.reserve(static_cast<std::size_t>(scene.NumNodes()));
    for (int i = 0; i < scene.NumNodes(); ++i)
        nodes.push_back(scene.GetNode(i));
    return nodes;
}

host::RenderElementManager& ProductionElements() {
    return host::App().elements[RS_Production];
}

}  // namespace

PanelScene::SceneOfApplication::~SceneOfApplication() {
    host::ResetScene();
}

PanelScene::PanelScene(const std::filesystem::path& libraryFile) : library(libraryFile) {
    for (ClassDesc* each : library.Classes())
        host::App().classes.Add(each);
    New();
}

Effect& PanelScene::GetEffect() const {
    const Class_ID wanted = library.ClassAt(0)->ClassID();
    Effect* found = nullptr;
    for (const auto& effect : host::App().effects) {
        if (effect->ClassID() != wanted) continue;
        if (effect->Active(host::App().settings.time)) return *effect;
        if (!found) found = effect.get();
    }
    // MakeSureOfEffect made one.
    return found ? *found : *host::App().effects.front();
}

bool PanelScene::MakeSureOfEffect() const {
    ClassDesc* wanted = library.ClassAt(0);
    auto& effects = host::App().effects;
    const bool isThere = std::any_of(effects.begin(), effects.end(), [wanted](const auto& effect) {
        return effect->ClassID() == wanted->ClassID();
    });
    if (!isThere) effects.emplace_back(static_cast<Effect*>(wanted->Create()));
    return !isThere;
}

void PanelScene::TakeAsUnchanged() {
    saved = SceneText();
}

bool PanelScene::IsChanged() const {
    try {
        return SceneText() != saved;
    } catch (const InputError&) {
        return true;
    }
}

void PanelScene::New() {
    host::ResetScene();
    MakeSureOfEffect();
    file.clear();
    elementSettings.clear();
    withoutPass.clear();
    TakeAsUnchanged();
}

// Files that people write name settings instead of saving an effect.
void PanelScene::ApplySettingsByName(const SceneDescription& scene) const {
    IParamBlock2& block = *GetEffect().GetParamBlock(0);
    if (!ApplyParameters(scene, NodesInOrder(), block)) {
        throw InputError(scene.path +
                         ": effect.parameters: veltrane.dlv is of another version and lacks one of "
                         "them; take the files of one version");
    }
    plugin::SyncRenderElements(GetEffect());
    host::RenderElementManager& elements = ProductionElements();
    for (int i = 0; i < elements.NumRenderElements(); ++i) {
        const host::RenderElement* element = elements.GetRenderElement(i);
        IParamBlock2* layer = LayerSettingsOf(block, element);
        const std::string name = host::ToUtf8(element->ElementName());
        if (layer) ApplyLayerSettings(scene.elementSettings, name, *layer);
    }
}

void PanelScene::Complete(const SceneDescription& scene) const {
    const bool isNew = MakeSureOfEffect();
    ApplySettingsByName(scene);
    if (!isNew) return;
    // The effect is one of a file then, and none that the user has just made, whom it would ask for
    // a file name first of all.
    host::SceneDescription whole = host::CaptureScene();
    whole.path = scene.path;
    host::OpenScene(whole);
}

void PanelScene::Open(const std::string& path) {
    SceneDescription scene = ReadSceneFile(path);
    std::string text;
    host::OpenScene(scene, [&] {
        Complete(scene);
        text = SceneText();
    });
    file = path;
    saved = std::move(text);
    elementSettings = std::move(scene.elementSettings);
    withoutPass.clear();
    std::copy_if(scene.elements.begin(), scene.elements.end(), std::back_inserter(withoutPass),
                 [](const host::SceneElement& element) { return element.handle == 0; });
}

void PanelScene::Save(const std::string& path) {
    host::SaveScene(path);
    file = path;
    TakeAsUnchanged();
}

void PanelScene::WriteCopy(const std::string& path) {
    host::ReplaceWholeFile(path, SceneText());
}

// The element that the scene has for the pass, or a new one, and whether its settings in the effect
// don't know of the pass yet.
std::pair<host::RenderElement*, bool> PanelScene::ElementOf(const PassElement& pass) {
    host::RenderElementManager& elements = ProductionElements();
    const MSTR name = host::FromUtf8(pass.name);
    host::RenderElement* element = elements.Find(name);
    const auto known =
        std::find_if(withoutPass.begin(), withoutPass.end(),
                     [&](const host::SceneElement& each) { return each.name == pass.name; });
    if (known == withoutPass.end()) {
        return element ? std::pair(element, false)
                       : std::pair(&elements.Add(pass.classID, name), true);
    }
    const host::SceneElement description = *known;
    withoutPass.erase(known);
    const bool fits = element && (description.elementClass || pass.classID == element->ClassID());
    if (fits) return {element, true};
    if (element) elements.Remove(element);
    host::RenderElement& added =
        elements.Add(description.elementClass.value_or(pass.classID), name);
    host::DescribeElement(description, NodesInOrder(), added);
    return {&added, true};
}

void PanelScene::UseRenderFile(const std::string& path) {
    const auto render = OpenRenderFile(path);
    const Description& description = render->GetDescription();
    const PassPlan plan = PlanPasses(description, ChooseBeauty(description));
    const std::filesystem::path whole = std::filesystem::absolute(Native(path));
    const Window& frame =
        description.parts[description.layers[plan.beauty.layer].part].displayWindow;
    const Class_ID renderer = RendererClassOf(description);

    std::vector<std::pair<const PassElement*, host::RenderElement*>> toFit;
    for (const PassElement& pass : plan.elements) {
        const auto [element, isNew] = ElementOf(pass);
        if (isNew) toFit.emplace_back(&pass, element);
    }
    plugin::SyncRenderElements(GetEffect());
    IParamBlock2& block = *GetEffect().GetParamBlock(0);
    const bool inVRay = renderer != Class_ID();
    for (const auto& [pass, element] : toFit) {
        IParamBlock2* layer = LayerSettingsOf(block, element);
        if (!layer) continue;
        FitToPass(*pass, {.inVRay = inVRay, .sharesAlpha = inVRay}, *layer);
        ApplyLayerSettings(elementSettings, pass->name, *layer);
    }
    SetUpRenderer(renderer);
    // The file is what the scene is rendered to.
    host::EditRenderSettings([&](host::RenderSettings& settings) {
        settings.output.SetName(host::FromNativePath(whole).data());
        settings.saveFile = TRUE;
        settings.width = static_cast<int>(frame.Width());
        settings.height = static_cast<int>(frame.Height());
    });
}

std::string PanelScene::RenderOutput() {
    return host::ToUtf8(host::App().settings.render.output.Name());
}

std::string PanelScene::DocumentPath() const {
    IParamBlock2& block = *GetEffect().GetParamBlock(0);
    const bool matches = block.GetInt(Session::IdOf("matchRenderOutputFilename")) != 0;
    const std::string name =
        matches ? RenderOutput() : host::ToUtf8(block.GetStr(Session::IdOf("filename")));
    if (name.empty()) return {};
    std::filesystem::path path = std::filesystem::absolute(Native(name));
    if (matches) path.replace_extension(Session::SuffixOf(block));
    return Utf8(path.make_preferred());
}

bool PanelScene::MayRender() const {
    host::Settings& settings = host::App().settings;
    // A file is one frame, whose document has no number.
    const int timeType = std::exchange(settings.render.timeType, REND_TIMESINGLE);
    settings.render.aborted = false;
    Effect& effect = GetEffect();
    effect.RenderBegin(settings.time, 0);
    effect.RenderEnd(settings.time);
    settings.render.timeType = timeType;
    return !std::exchange(settings.render.aborted, false);
}

}  // namespace command
