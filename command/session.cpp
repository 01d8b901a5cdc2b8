#include "command/session.h"

#include <gamma.h>
#include <rendererclasses.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "command/apply_scene.h"
#include "command/native_path.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

// V-Ray keeps the frame in its own frame buffer, of the frame's size, and gives it to the
// application as well.
void SetUpVRay(host::HostRenderer& renderer) {
    renderer.GetParamBlock(host::VRAY_BLOCK)->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, TRUE);
    host::App().settings.render.saveFile = TRUE;
}

void SetUpRenderer(Class_ID id) {
    if (id == Class_ID()) return;
    auto* renderer = new host::HostRenderer(id);
    host::App().renderer.reset(renderer);
    if (id == VRAY_CLASS_ID) SetUpVRay(*renderer);
}

void SetUpScene(const SceneDescription& scene) {
    host::Settings& settings = host::App().settings;
    ApplyScene(scene, host::App().scene);
    if (scene.render.hidden) settings.render.hidden = *scene.render.hidden;
    if (scene.render.frameRate) settings.frameRate = *scene.render.frameRate;
}

}  // namespace

Session::Session(const SaveArguments& arguments, const SavePlan& plan,
                 std::vector<Setting> settings, const SceneDescription* scene, Class_ID renderer)
    : look(arguments.lut.empty() ? nullptr : std::make_unique<Look>(arguments.lut)) {
    host::ResetApplication();
    host::Application& app = host::App();
    app.settings.quiet = true;
    // Nothing of a document may change from run to run.
    app.settings.randomSeed = 1;
    if (look) app.settings.temporaryFolder = host::FromUtf8(look->Folder());
    app.settings.render.output.SetName(host::FromUtf8(plan.output));
    gammaMgr.dithTrue = FALSE;
    gammaMgr.enable = arguments.gamma ? TRUE : FALSE;
    if (arguments.gamma) gammaMgr.SetFileOutGamma(*arguments.gamma);
    SetUpRenderer(renderer);
    // The effect finds the scene's selection sets when it is made.
    if (scene) SetUpScene(*scene);

    for (int i = 0; i < LibNumberClasses(); ++i)
        app.classes.Add(LibClassDesc(i));
    ClassDesc* wanted = LibClassDesc(0);
    effect =
        static_cast<Effect*>(app.classes.CreateInstance(wanted->SuperClassID(), wanted->ClassID()));
    app.effects.emplace_back(effect);
    block = effect->GetParamBlock(0);

    Set("matchRenderOutputFilename", "false");
    Set("filename", plan.output);
    if (scene) {
        ApplyParameters(*scene, app.scene, *block);
        given = scene->parameters;
        // What the user says counts more.
        if (!arguments.output.empty()) {
            Set("matchRenderOutputFilename", "false");
            Set("filename", plan.output);
        }
    }
    if (!plan.shadow.empty()) Set("shadowPassSource", plan.shadow);
    for (Setting& setting : settings) {
        Apply(setting, *block);
        given.push_back(std::move(setting));
    }
}

Session::~Session() {
    host::ResetApplication();
}

ParamID Session::IdOf(std::string_view name) {
    const auto rows = plugin::EffectParameters();
    return std::find_if(rows.begin(), rows.end(),
                        [&](const parameters::Row& row) { return row.name == name; })
        ->id;
}

bool Session::IsGiven(std::string_view name) const {
    return std::any_of(given.begin(), given.end(),
                       [&](const Setting& setting) { return setting.row->name == name; });
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
        path = Utf8(std::filesystem::absolute(Native(output))
                        .replace_extension(GetInt("fileFormat") != 0 ? ".psb" : ".psd"));
    }
    if (!numbered) return path;
    constexpr std::size_t longestPath = 260;
    std::array<MCHAR, longestPath> name{};
    const bool fits =
        BMMCreateNumberedFilename(host::FromUtf8(path).data(), frame, name.data(), name.size());
    return fits ? host::ToUtf8(name.data()) : std::string();
}

}  // namespace command
