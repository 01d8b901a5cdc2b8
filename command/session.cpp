#include "command/session.h"

#include <gamma.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "command/apply_parameters.h"
#include "command/effect_library.h"
#include "command/failure.h"
#include "command/native_path.h"
#include "command/set_up_renderer.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/temporary_folder.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

// The scene is the application's; what is rendered, and where to, is the command's matter.
host::BuiltScene SetUpScene(const SceneDescription& scene) {
    host::CheckScene(scene, host::App().classes);
    host::BuiltScene built = host::BuildScene(scene, host::ElementsToBuild::WithHandles);
    host::App().renderer.reset();
    host::RenderSettings& render = host::App().settings.render;
    const host::RenderSettings ofScene = std::exchange(render, {});
    render.hidden = ofScene.hidden;
    render.camera = ofScene.camera;
    return built;
}

bool SavesDocuments(Effect& effect) {
    return effect.ClassID() == effectLibrary.classDesc(0)->ClassID();
}

// The scene's effect that is to save the document; null when it has none at all.
Effect* FindEffect(const SceneDescription& scene, const host::BuiltScene& built) {
    Effect* found = nullptr;
    bool any = false;
    for (Effect* effect : built.effects) {
        if (!SavesDocuments(*effect)) continue;
        any = true;
        if (!effect->Active(host::App().settings.time)) continue;
        if (found) {
            throw InputError(scene.path +
                             ": effects: more than one effect that saves documents is on; switch "
                             "the others off in the application");
        }
        found = effect;
    }
    if (any && !found) {
        throw InputError(scene.path +
                         ": effects: the effect that saves the document is off; switch it on in "
                         "the application");
    }
    return found;
}

Effect& NewEffect() {
    ClassDesc* wanted = effectLibrary.classDesc(0);
    host::Application& app = host::App();
    auto* effect =
        static_cast<Effect*>(app.classes.CreateInstance(wanted->SuperClassID(), wanted->ClassID()));
    app.effects.emplace_back(effect);
    return *effect;
}

bool IsAsMade(const parameters::Row& row, IParamBlock2& block) {
    using parameters::Type;
    switch (row.type) {
        case Type::Bool:
        case Type::Int:
            return block.GetInt(row.id) == static_cast<int>(row.number);
        case Type::Float:
        case Type::Fraction:
            return block.GetFloat(row.id) == static_cast<float>(row.number);
        case Type::String:
        case Type::Filename: {
            const MCHAR* text = block.GetStr(row.id);
            return host::ToUtf8(text) == row.text;
        }
        case Type::Reference:
            return block.GetReferenceTarget(row.id) == nullptr;
        case Type::ReferenceTable:
        case Type::NodeTable:
        case Type::StringTable:
            break;
    }
    return block.Count(row.id) == 0;
}

}  // namespace

Session::Cleared::Cleared() {
    host::ResetApplication();
}

Session::Cleared::~Cleared() {
    host::ResetApplication();
}

Session::Session(const SaveArguments& arguments, const SavePlan& plan,
                 const std::vector<Setting>& settings, const SceneDescription* scene,
                 Class_ID renderer)
    : look(arguments.lut.empty() ? nullptr : std::make_unique<Look>(arguments.lut)),
      undoPause(host::App().undo) {
    plugin::Attach();
    host::Application& app = host::App();
    app.settings.quiet = true;
    // Nothing of a document may change from run to run.
    app.settings.randomSeed = 1;
    if (look) host::UseTemporaryFolder(host::FromUtf8(look->Folder()));
    gammaMgr.dithTrue = FALSE;
    gammaMgr.enable = arguments.gamma ? TRUE : FALSE;
    if (arguments.gamma) gammaMgr.SetFileOutGamma(*arguments.gamma);
    for (int i = 0; i < effectLibrary.numberClasses(); ++i)
        app.classes.Add(effectLibrary.classDesc(i));
    // The effect finds the scene's selection sets when it is made.
    host::BuiltScene built = scene ? SetUpScene(*scene) : host::BuiltScene();
    nodes = std::move(built.nodes);
    app.settings.render.output.SetName(host::FromUtf8(plan.output));
    SetUpRenderer(renderer);

    effect = scene ? FindEffect(*scene, built) : nullptr;
    const bool isSaved = effect != nullptr;
    if (!isSaved) effect = &NewEffect();
    block = effect->GetParamBlock(0);
    if (isSaved) NoteWhatIsSaved();

    const bool namesDocument = isSaved && arguments.output.empty() &&
                               GetInt("matchRenderOutputFilename") == 0 &&
                               *block->GetStr(IdOf("filename")) != 0;
    const bool matchesRender =
        isSaved && arguments.output.empty() && GetInt("matchRenderOutputFilename") != 0;
    if (!namesDocument) SetOutput(plan.output);
    const MSTR besideRender(block->GetStr(IdOf("filename")));
    if (scene) {
        ApplyParameters(*scene, nodes, *block);
        for (const Setting& setting : scene->parameters)
            given.insert(setting.row->id);
        for (const NodeTable& table : scene->nodeTables)
            given.insert(table.row->id);
        // What the user says counts more.
        if (!arguments.output.empty()) SetOutput(plan.output);
    }
    if (!plan.shadow.empty()) Set("shadowPassSource", plan.shadow);
    for (const Setting& setting : settings) {
        Apply(setting, *block);
        given.insert(setting.row->id);
    }
    const bool namedSince = besideRender != MSTR(block->GetStr(IdOf("filename")));
    if (matchesRender && !namedSince) {
        SetOutput(Utf8(Native(plan.output).replace_extension(SuffixOf(*block))));
    }
}

void Session::NoteWhatIsSaved() {
    for (const parameters::Row& row : plugin::EffectParameters()) {
        if (!IsAsMade(row, *block)) given.insert(row.id);
    }
}

void Session::SetOutput(const std::string& path) {
    Set("matchRenderOutputFilename", "false");
    Set("filename", path);
}

ParamID Session::IdOf(std::string_view name) {
    const auto rows = plugin::EffectParameters();
    return std::find_if(rows.begin(), rows.end(),
                        [&](const parameters::Row& row) { return row.name == name; })
        ->id;
}

const char* Session::SuffixOf(IParamBlock2& effect) {
    return effect.GetInt(IdOf("fileFormat")) != 0 ? ".psb" : ".psd";
}

bool Session::IsGiven(std::string_view name) const {
    return given.contains(IdOf(name));
}

bool Session::IsLookInLayer() const {
    return look && GetInt("vrayColorCorrections") != 0 &&
           GetInt("colorCorrectConfig") == byAdjustmentLayer;
}

bool Session::IsLookInPixels() const {
    return look && GetInt("vrayColorCorrections") != 0 && !IsLookInLayer();
}

void Session::Set(std::string_view name, const std::string& text) {
    Apply(ParseSetting(std::string(name) + "=" + text, plugin::EffectParameters()), *block);
}

void Session::SetUnlessGiven(std::string_view name, const std::string& text) {
    if (!IsGiven(name)) Set(name, text);
}

std::string Session::DocumentPath(int frame, bool numbered) const {
    std::string path = host::ToUtf8(block->GetStr(IdOf("filename")));
    if (GetInt("matchRenderOutputFilename") != 0) {
        const std::string output = host::ToUtf8(host::App().settings.render.output.Name());
        path = Utf8(std::filesystem::absolute(Native(output)).replace_extension(SuffixOf(*block)));
    }
    if (!numbered) return path;
    constexpr std::size_t longestPath = 260;
    std::array<MCHAR, longestPath> name{};
    const bool fits =
        BMMCreateNumberedFilename(host::FromUtf8(path).data(), frame, name.data(), name.size());
    return fits ? host::ToUtf8(name.data()) : std::string();
}

}  // namespace command
