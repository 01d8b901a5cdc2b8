#include "command/frame_elements.h"

#include <iparamb2.h>

#include <algorithm>

#include "command/failure.h"
#include "command/layer_settings.h"
#include "command/nearest_names.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

host::RenderElementManager& Elements() {
    return host::App().elements[RS_Production];
}

[[noreturn]] void FailOfName(const std::string& path, const std::string& wanted,
                             const std::vector<std::string>& names) {
    throw InputError(path + ": there is no render element \"" + wanted + "\"" +
                     (names.empty() ? ", nor any other"
                                    : "; the nearest are " + Joined(NearestNames(wanted, names))));
}

}  // namespace

void FitToPass(const PassElement& pass, ElementOrigin origin, IParamBlock2& block) {
    if (pass.isDouble) block.SetValue(LayerParameter("visible"), 0, FALSE);
    if (origin.inVRay && !origin.sharesAlpha && !pass.channels.alpha) {
        block.SetValue(LayerParameter("premultiply"), 0, TRUE);
        block.SetValue(LayerParameter("transparency"), 0, FALSE);
    }
}

FrameElements::FrameElements(Session& hostSession, const SceneDescription* sceneDescription,
                             const std::vector<std::string>& userSettings, bool ofVRay)
    : session(hostSession), scene(sceneDescription), inVRay(ofVRay) {
    if (scene) settings = scene->elementSettings;
    for (const std::string& text : userSettings)
        settings.push_back(ParseElementSetting(text));
    for (int i = 0; i < Elements().NumRenderElements(); ++i) {
        const host::RenderElement* element = Elements().GetRenderElement(i);
        if (LayerSettingsOf(session.Block(), element)) saved.insert(element);
    }
}

std::vector<FrameElement> FrameElements::SetUp(const std::vector<PassElement>& passes,
                                               bool sharesAlpha) {
    std::vector<FrameElement> frame;
    for (const PassElement& pass : passes) {
        const MSTR name = host::FromUtf8(pass.name);
        host::RenderElement* element = Elements().Find(name);
        if (!element) {
            const SceneElement* known = FindInScene(pass.name);
            const bool hasClass = known && known->elementClass;
            element = &Elements().Add(hasClass ? *known->elementClass : pass.classID, name);
            if (known) host::DescribeElement(*known, session.SceneNodes(), *element);
        }
        if (inVRay) element->SetInVRayFrameBuffer();
        frame.push_back({&pass, element});
    }
    plugin::SyncRenderElements(session.GetEffect());
    Settle(frame, sharesAlpha);
    return frame;
}

void FrameElements::Settle(const std::vector<FrameElement>& frame, bool sharesAlpha) {
    for (const FrameElement& each : frame) {
        if (!settled.insert(each.element).second) continue;
        IParamBlock2* block = LayerSettingsOf(session.Block(), each.element);
        if (!block) continue;
        if (!saved.contains(each.element)) FitToPass(*each.pass, {inVRay, sharesAlpha}, *block);
        ApplyLayerSettings(settings, each.pass->name, *block);
    }
}

const SceneElement* FrameElements::FindInScene(const std::string& name) const {
    if (!scene) return nullptr;
    const auto found = std::find_if(scene->elements.begin(), scene->elements.end(),
                                    [&](const SceneElement& each) { return each.name == name; });
    return found == scene->elements.end() ? nullptr : &*found;
}

std::vector<std::string> FrameElements::SettingsWithoutElement(const std::string& path) const {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(Elements().NumRenderElements()));
    for (int i = 0; i < Elements().NumRenderElements(); ++i)
        names.push_back(host::ToUtf8(Elements().GetRenderElement(i)->ElementName()));
    const std::size_t ofScene = scene ? scene->elementSettings.size() : 0;
    std::vector<std::string> without;
    for (std::size_t i = 0; i < settings.size(); ++i) {
        const std::string& wanted = settings[i].element;
        const bool fits = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return IsFor(settings[i], name);
        });
        if (fits) continue;
        if (i >= ofScene && wanted.find('*') == std::string::npos) {
            FailOfName(path, wanted, names);
        }
        without.push_back(wanted);
    }
    return without;
}

bool FrameElements::IsUsed(const host::RenderElement& element) const {
    if (session.GetInt("createRenderElementLayers") == 0 || !element.IsEnabled()) return false;
    IParamBlock2* block = LayerSettingsOf(session.Block(), &element);
    return block && block->GetInt(LayerParameter("enabled")) != 0;
}

void FrameElements::TellVRayWhatIsOn(const std::vector<FrameElement>& frame) {
    for (int i = 0; i < Elements().NumRenderElements(); ++i) {
        host::RenderElement* element = Elements().GetRenderElement(i);
        if (!host::IsVRayElement(element->ClassID())) continue;
        const bool isOn = std::any_of(frame.begin(), frame.end(), [&](const FrameElement& each) {
            return each.image && each.element == element;
        });
        element->SetParameter(host::VRAY_ELEMENT_ENABLED, isOn ? TRUE : FALSE);
    }
}

void FrameElements::Release() {
    for (int i = 0; i < Elements().NumRenderElements(); ++i)
        Elements().GetRenderElement(i)->SetBitmap(nullptr);
}

}  // namespace command
