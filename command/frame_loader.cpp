#include "command/frame_loader.h"

#include <iparamb2.h>
#include <rendererclasses.h>
#include <vrayelements.h>

#include <algorithm>
#include <array>
#include <utility>

#include "command/beauty.h"
#include "command/coverage_tally.h"
#include "command/deep_channels.h"
#include "command/deep_numbers.h"
#include "command/failure.h"
#include "command/fragments.h"
#include "command/half_ids.h"
#include "command/image_builder.h"
#include "command/library_errors.h"
#include "command/nearest_names.h"
#include "command/pixel_aspect.h"
#include "command/row_requests.h"
#include "command/row_values.h"
#include "command/vray_frame.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/render_loop.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

constexpr RenderSettingID production = RS_Production;

ParamID LayerParameter(std::string_view name) {
    const auto rows = plugin::LayerParameters();
    return std::find_if(rows.begin(), rows.end(),
                        [&](const parameters::Row& row) { return row.name == name; })
        ->id;
}

// The effect's settings of one element; null when it has none.
IParamBlock2* SettingsOf(IParamBlock2& effect, const IRenderElement* element) {
    const ParamID list = Session::IdOf("layersProduction");
    const ParamID renderElement = LayerParameter("renderElement");
    for (int i = 0; i < effect.Count(list); ++i) {
        ReferenceTarget* layer = effect.GetReferenceTarget(list, 0, i);
        IParamBlock2* block = layer ? layer->GetParamBlock(0) : nullptr;
        if (block && block->GetReferenceTarget(renderElement) == element) return block;
    }
    return nullptr;
}

}  // namespace

// An element of the frame, and its image once it is read.
struct FrameLoader::UsedElement {
    const PassElement* pass;
    host::RenderElement* element;
    // Its image's number while it is read.
    std::optional<std::size_t> inReading;
    host::Owned<host::ImageBitmap> image;
};

// What is known of the frame in hand.
struct FrameLoader::Frame {
    std::string path;
    std::unique_ptr<RenderFile> file;
    PassPlan plan;
    // G-Buffer channels that the effect reads and the file can tell.
    DWORD channels = 0;
    int width = 0;
    int height = 0;
    float pixelAspect = 1.0F;
    host::Owned<host::ImageBitmap> picture;
    std::vector<UsedElement> elements;

    const Description& Describe() const { return file->GetDescription(); }
    std::size_t FramePart() const { return Describe().layers[plan.beauty.layer].part; }
    const Channel& ChannelOf(const ChannelRef& channel) const {
        return Describe().layers[channel.layer].channels[channel.channel];
    }
    const Cryptomatte* ObjectMatte() const {
        return plan.objectMatte ? &plan.cryptomattes[*plan.objectMatte] : nullptr;
    }
    const Cryptomatte* MaterialMatte() const {
        return plan.materialMatte ? &plan.cryptomattes[*plan.materialMatte] : nullptr;
    }
};

FrameLoader::FrameLoader(const SaveArguments& saveArguments, Session& hostSession,
                         const SceneDescription* sceneDescription, Warn warnUser)
    : arguments(saveArguments),
      session(hostSession),
      warn(std::move(warnUser)),
      scene(sceneDescription),
      identities(host::App().scene) {
    if (scene) elementSettings = scene->elementSettings;
    for (const std::string& text : arguments.elementSettings)
        elementSettings.push_back(ParseElementSetting(text));
    auto* renderer = dynamic_cast<host::HostRenderer*>(host::App().renderer.get());
    if (renderer && renderer->ClassID() == VRAY_CLASS_ID) {
        vray = std::make_shared<host::VRayFrameBuffer>();
        renderer->SetFrameBuffer(vray);
    }
}

FrameLoader::~FrameLoader() {
    ReleaseFrame();
}

host::Owned<host::ImageBitmap> FrameLoader::Load(const std::string& path) {
    ReleaseFrame();
    return Guarded(path, [&] { return Read(path); });
}

host::Owned<host::ImageBitmap> FrameLoader::Read(const std::string& path) {
    Frame frame;
    frame.path = path;
    frame.file = OpenRenderFile(path);
    const Description& file = frame.Describe();
    frame.plan = PlanPasses(file, ChooseBeauty(file, arguments.beauty));
    DropHalfIDs(*frame.file, frame.plan);
    const Part& part = file.parts[frame.FramePart()];
    frame.width = static_cast<int>(part.displayWindow.Width());
    frame.height = static_cast<int>(part.displayWindow.Height());
    frame.pixelAspect = SoundAspect(part.pixelAspect);
    host::RenderSettings& render = host::App().settings.render;
    render.width = frame.width;
    render.height = frame.height;

    SetUpElements(frame);
    ApplyElementSettings();
    CheckElementSettings(frame);
    if (arguments.all) TurnOnAll(frame);
    if (part.deep) {
        ReadDeep(frame);
    } else {
        ReadFlat(frame);
    }
    SetLists();
    TellWarnings(frame);
    WarnOfNumbers(frame);
    return std::move(frame.picture);
}

void FrameLoader::WarnOnce(const std::string& text) {
    if (told.insert(text).second) warn(text);
}

// Told of the first frame that has too many.
void FrameLoader::WarnOfLeftOut(const Frame& frame, std::size_t leftOut, const std::string& what,
                                int room) {
    if (leftOut == 0 || !told.insert(what).second) return;
    warn(frame.path + ": " + std::to_string(leftOut) + " " + what +
         " with the least coverage have no matte of their own: there is room for " +
         std::to_string(room));
}

// Told once.
void FrameLoader::WarnOfNumbers(const Frame& frame) {
    if (identities.Unnamed() > 0 && told.insert("unnamed").second) {
        warn(
            frame.path + ": " + std::to_string(identities.Unnamed()) +
            " ids of Cryptomatte have no name in its manifest; their mattes are called by the ids");
    }
    if (materialNumbers.Largest() > mostMaterials && told.insert("numbers").second) {
        warn(frame.path + ": material IDs above 255 have no matte; the largest is " +
             std::to_string(materialNumbers.Largest()));
    }
}

// Those that a whole sequence shares are told once.
void FrameLoader::TellWarnings(const Frame& frame) {
    for (const auto* warnings : {&frame.Describe().warnings, &frame.plan.warnings}) {
        for (const std::string& warning : *warnings) {
            if (told.insert(warning).second) warn(frame.path + ": " + warning);
        }
    }
}

void FrameLoader::ReleaseFrame() {
    if (vray) vray->EndFrame();
    host::RenderElementManager& elements = host::App().elements[production];
    for (int i = 0; i < elements.NumRenderElements(); ++i)
        elements.GetRenderElement(i)->SetBitmap(nullptr);
}

// Elements of earlier frames stay, without pixels if this frame has none.
void FrameLoader::SetUpElements(Frame& frame) {
    host::RenderElementManager& elements = host::App().elements[production];
    for (const PassElement& pass : frame.plan.elements) {
        const MSTR name = host::FromUtf8(pass.name);
        host::RenderElement* element = elements.Find(name);
        if (!element) {
            const SceneElement* known = FindSceneElement(pass.name);
            const bool hasClass = known && known->elementClass;
            element = &elements.Add(hasClass ? *known->elementClass : pass.classID, name);
            if (vray) element->SetInVRayFrameBuffer();
            if (known) ApplySceneElement(*known, *element);
        }
        frame.elements.push_back({&pass, element, std::nullopt, nullptr});
    }
    plugin::SyncRenderElements(session.GetEffect());
    for (const UsedElement& each : frame.elements) {
        IParamBlock2* settings = SettingsOf(session.Block(), each.element);
        if (!each.pass->isDouble || !settings || settled.contains(each.element)) continue;
        settings->SetValue(LayerParameter("visible"), 0, FALSE);
    }
}

const SceneElement* FrameLoader::FindSceneElement(const std::string& name) const {
    if (!scene) return nullptr;
    const auto found = std::find_if(scene->elements.begin(), scene->elements.end(),
                                    [&](const SceneElement& each) { return each.name == name; });
    return found == scene->elements.end() ? nullptr : &*found;
}

void FrameLoader::ApplySceneElement(const SceneElement& known, host::RenderElement& element) const {
    element.SetEnabled(known.enabled);
    if (!known.multiMatte) return;
    for (int i = 0; i < static_cast<int>(known.multiMatte->size()); ++i) {
        const SceneMatte& matte = (*known.multiMatte)[static_cast<std::size_t>(i)];
        MultiMatteComponent component;
        component.idOn = matte.id.has_value();
        component.id = matte.id.value_or(0);
        component.isMaterial = matte.isMaterial;
        component.include = matte.include;
        for (const std::size_t index : matte.nodes) {
            const MSTR name = host::FromUtf8(scene->nodes[index].name);
            INode* node = host::App().scene.FindNode(name);
            component.nodes.Append(1, &node);
        }
        element.SetMultiMatte(i, component);
    }
}

void FrameLoader::ApplyElementSettings() {
    host::RenderElementManager& elements = host::App().elements[production];
    for (int i = 0; i < elements.NumRenderElements(); ++i) {
        host::RenderElement* element = elements.GetRenderElement(i);
        if (!settled.insert(element).second) continue;
        IParamBlock2* block = SettingsOf(session.Block(), element);
        const std::string name = host::ToUtf8(element->ElementName());
        for (const ElementSetting& each : elementSettings) {
            if (block && IsFor(each, name)) Apply(each.setting, *block);
        }
    }
}

// A name that fits no element so far is the user's mistake; a scene may know more than one file.
void FrameLoader::CheckElementSettings(const Frame& frame) {
    host::RenderElementManager& elements = host::App().elements[production];
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(elements.NumRenderElements()));
    for (int i = 0; i < elements.NumRenderElements(); ++i)
        names.push_back(host::ToUtf8(elements.GetRenderElement(i)->ElementName()));
    const std::size_t ofScene = scene ? scene->elementSettings.size() : 0;
    for (std::size_t i = 0; i < elementSettings.size(); ++i) {
        const ElementSetting& setting = elementSettings[i];
        const bool fits = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return IsFor(setting, name);
        });
        if (fits) continue;
        if (i < ofScene || setting.element.find('*') != std::string::npos) {
            WarnOnce(frame.path + ": no render element fits \"" + setting.element + "\"");
            continue;
        }
        throw InputError(
            frame.path + ": there is no render element \"" + setting.element + "\"" +
            (names.empty() ? ", nor any other"
                           : "; the nearest are " + Joined(NearestNames(setting.element, names))));
    }
}

void FrameLoader::TurnOnAll(const Frame& frame) {
    const PassPlan& plan = frame.plan;
    const bool deepObjects = plan.deep && plan.deep->objectID;
    const bool deepMaterials = plan.deep && plan.deep->materialID;
    const bool objectNumbersInFile = plan.objectID.has_value() || deepObjects;
    const bool materials = plan.materialMatte || plan.materialID || deepMaterials;
    const bool numberedNodes =
        scene && std::any_of(scene->nodes.begin(), scene->nodes.end(),
                             [](const auto& node) { return node.objectID > 0; });
    const std::pair<const char*, bool> outputs[] = {
        {"createRenderElementLayers", true},
        {"outputObjects", plan.objectMatte.has_value()},
        {"outputNodeIDs",
         (objectNumbersInFile && !plan.objectMatte) || session.IsGiven("nodeIDList")},
        {"outputMtlIDs", materials},
        {"outputSceneLayers", scene && !scene->layers.empty() && plan.objectMatte},
        {"outputNamedSelectionSets", scene && !scene->selectionSets.empty() && plan.objectMatte},
        {"createNodeIDLayer", objectNumbersInFile || (numberedNodes && plan.objectMatte)},
        {"createMtlIDLayer", materials},
        {"createNodeRenderIDLayer", plan.objectMatte.has_value()},
        {"createNormalLayer", plan.normals.has_value()},
    };
    for (const auto& [name, isThere] : outputs) {
        if (isThere) session.SetUnlessGiven(name, "true");
    }
}

std::vector<ManifestEntry> FrameLoader::EntriesOf(const Frame& frame, const Cryptomatte& matte,
                                                  bool byCoverage) {
    const Manifest& manifest = matte.manifest;
    if (!byCoverage && !manifest.entries.empty()) return manifest.entries;
    CoverageTally tally;
    RowRequests requests;
    struct Places {
        std::size_t id;
        std::size_t coverage;
    };
    std::vector<Places> ranks;
    for (const CryptomatteRank& rank : matte.ranks)
        ranks.push_back({requests.Add(rank.id), requests.Add(rank.coverage)});
    RowValues values;
    const auto width = static_cast<std::size_t>(frame.width);
    frame.file->ReadRows(frame.FramePart(), requests.Channels(),
                         [&](int /*y*/, std::span<const ChannelRow> rows) {
                             for (const Places& rank : ranks) {
                                 tally.AddRow({RowValues::AsBits(rows[rank.id], width),
                                               values.AsFloats(rows[rank.coverage], width)});
                             }
                         });
    std::vector<ManifestEntry> entries;
    for (const CoverageTally::Entry& seen : tally.Largest())
        entries.push_back({manifest.NameOf(seen.id), seen.id});
    return entries;
}

void FrameLoader::SetIdentities(const Frame& frame) {
    if (const Cryptomatte* matte = frame.ObjectMatte()) {
        std::vector<ManifestEntry> entries = EntriesOf(frame, *matte, false);
        if (identities.ObjectsBeyondLimit(entries) > 0) entries = EntriesOf(frame, *matte, true);
        WarnOfLeftOut(frame, identities.SetObjects(entries), "objects", mostObjects);
        // Only those that the scene file numbers have any.
        for (const UWORD number : identities.ObjectNumbers())
            objectNumbers.Add(number);
    }
    if (const Cryptomatte* matte = frame.MaterialMatte()) {
        std::vector<ManifestEntry> entries = EntriesOf(frame, *matte, false);
        if (identities.MaterialsBeyondLimit(entries) > 0) entries = EntriesOf(frame, *matte, true);
        WarnOfLeftOut(frame, identities.SetMaterials(entries), "materials", mostMaterials);
    }
}

bool FrameLoader::IsUsed(const host::RenderElement& element) const {
    if (session.GetInt("createRenderElementLayers") == 0 || !element.IsEnabled()) return false;
    IParamBlock2* block = SettingsOf(session.Block(), &element);
    return block && block->GetInt(LayerParameter("enabled")) != 0;
}
// What of the G-Buffer the effect wants and the file can tell.
DWORD FrameLoader::ChannelsToKeep(const Frame& frame) const {
    const PassPlan& plan = frame.plan;
    const bool deepObjects = plan.deep && plan.deep->objectID;
    const bool deepMaterials = plan.deep && plan.deep->materialID;
    DWORD known = BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_COLOR | BMM_CHAN_REALPIX;
    if (plan.objectMatte || plan.objectID || deepObjects) known |= BMM_CHAN_NODE_ID;
    if (plan.materialMatte || plan.materialID || deepMaterials) known |= BMM_CHAN_MTL_ID;
    if (plan.deep || (plan.depth && plan.depth->isDistance)) known |= BMM_CHAN_Z;
    if (plan.normals) known |= BMM_CHAN_NORMAL;
    const bool anyFragments = plan.objectMatte || plan.materialMatte || plan.objectID ||
                              plan.materialID || plan.depth || plan.normals || plan.deep;
    return anyFragments ? host::RequiredGBufferChannels(host::App().settings.time) & known : 0;
}

FragmentOptions FrameLoader::OptionsOfFragments(const PassPlan& plan) {
    FragmentOptions options;
    options.objectIndex = [this](std::uint32_t id) { return identities.ObjectOf(id); };
    options.materialIndex = [this](std::uint32_t id) { return identities.MaterialOf(id); };
    // The scene's numbers stand above those in the pixels.
    if (scene || !plan.objectID) options.objectIDs = identities.ObjectNumbers();
    return options;
}

// The user's numbers stand for materials when he names them.
bool FrameLoader::UsesMaterialNumbers(const PassPlan& plan) const {
    return plan.materialID && (!plan.materialMatte || session.IsGiven("mtlIDList"));
}

FragmentSources FrameLoader::SourcesOf(const Frame& frame, std::size_t picture) const {
    const PassPlan& plan = frame.plan;
    FragmentSources sources;
    if (const Cryptomatte* matte = frame.ObjectMatte()) sources.objects = matte->ranks;
    if (plan.objectID && (frame.channels & BMM_CHAN_NODE_ID) != 0) {
        sources.objectID = plan.objectID->channel;
    }
    if ((frame.channels & BMM_CHAN_MTL_ID) != 0) {
        if (UsesMaterialNumbers(plan)) {
            sources.materialID = plan.materialID->channel;
        } else if (const Cryptomatte* matte = frame.MaterialMatte()) {
            sources.materials = matte->ranks;
        }
    }
    if ((frame.channels & BMM_CHAN_Z) != 0) sources.depth = plan.depth->channel;
    if ((frame.channels & BMM_CHAN_NORMAL) != 0) {
        sources.normal = {plan.normals->x, plan.normals->y, plan.normals->z};
        if (plan.normals->space == PassDetail::WorldSpace) sources.camera = Camera();
    }
    // Also for its alpha, which is the coverage of pixels without ranks.
    if (!plan.beauty.lumaChroma) sources.picture = picture;
    return sources;
}

std::optional<CameraAxes> FrameLoader::Camera() const {
    if (!scene || !scene->render.camera) return std::nullopt;
    const auto& transform = scene->nodes[*scene->render.camera].transform;
    return transform ? AxesOf(*transform) : std::nullopt;
}

PassChannels FrameLoader::ChannelsOf(const Frame& frame) {
    const Beauty& beauty = frame.plan.beauty;
    const std::vector<Channel>& channels = frame.Describe().layers[beauty.layer].channels;
    const auto find = [&](const std::string& name) -> std::optional<ChannelRef> {
        if (name.empty()) return std::nullopt;
        const auto found = std::find_if(channels.begin(), channels.end(),
                                        [&](const Channel& each) { return each.name == name; });
        return ChannelRef{beauty.layer, static_cast<std::size_t>(found - channels.begin())};
    };
    return {find(beauty.red), find(beauty.green), find(beauty.blue), find(beauty.alpha)};
}

void FrameLoader::ReadFlat(Frame& frame) {
    frame.channels = ChannelsToKeep(frame);
    if (frame.channels != 0) SetIdentities(frame);
    FlatReading reading(*frame.file, frame.FramePart());
    // Luminance and chroma have a road of their own.
    const bool lumaChroma = frame.plan.beauty.lumaChroma;
    constexpr bool opaqueWithoutAlpha = true;
    const std::size_t picture =
        lumaChroma ? 0 : reading.AddImage(ChannelsOf(frame), opaqueWithoutAlpha);
    AddElementImages(frame, reading);
    std::unique_ptr<host::FragmentBuffer> fragments;
    std::optional<FragmentBuilder> builder;
    if (frame.channels != 0) {
        if (lumaChroma) frame.channels &= ~(BMM_CHAN_COLOR | BMM_CHAN_REALPIX);
        fragments =
            std::make_unique<host::FragmentBuffer>(frame.width, frame.height, frame.channels);
        builder.emplace(*fragments, OptionsOfFragments(frame.plan));
        reading.MakeFragments(SourcesOf(frame, picture), *builder, &objectNumbers,
                              &materialNumbers);
    }
    reading.Read();
    const float aspect = frame.pixelAspect;
    if (lumaChroma) {
        TakePicture(frame, frame.file->Read(frame.plan.beauty));
    } else {
        frame.picture = reading.TakeImage(picture, aspect);
        WarnOfNotFinite(frame, reading.NotFinite(picture));
    }
    TakeElementImages(frame, reading);
    Finish(frame, std::move(fragments));
}

void FrameLoader::AddElementImages(Frame& frame, FlatReading& reading) const {
    for (UsedElement& each : frame.elements) {
        if (IsUsed(*each.element)) each.inReading = reading.AddImage(each.pass->channels);
    }
}

void FrameLoader::TakeElementImages(Frame& frame, FlatReading& reading) {
    for (UsedElement& each : frame.elements) {
        if (each.inReading) each.image = reading.TakeImage(*each.inReading, frame.pixelAspect);
    }
}

void FrameLoader::ReadDeep(Frame& frame) {
    frame.channels = ChannelsToKeep(frame);
    TakePicture(frame, frame.file->Read(frame.plan.beauty));
    // Other parts of the file may be flat.
    FlatReading reading(*frame.file, frame.FramePart());
    AddElementImages(frame, reading);
    if (reading.HasImages()) reading.Read();
    TakeElementImages(frame, reading);
    std::unique_ptr<host::FragmentBuffer> fragments;
    if (frame.channels != 0) {
        fragments =
            std::make_unique<host::FragmentBuffer>(frame.width, frame.height, frame.channels);
        FragmentBuilder builder(*fragments, OptionsOfFragments(frame.plan));
        const DeepPass& deep = *frame.plan.deep;
        DeepChannels channels = ChooseDeepChannels(frame.Describe(), frame.plan.beauty);
        channels.ids = deep.channels.ids;
        const DeepNumbers numbers(frame.Describe(), frame.FramePart(), deep);
        std::vector<DeepFragment> samples;
        frame.file->ReadDeepRows(frame.FramePart(), channels, [&](int /*y*/, const DeepRow& row) {
            for (std::size_t x = 0; x < static_cast<std::size_t>(frame.width); ++x) {
                samples.clear();
                for (const DeepSample& sample : row.Pixel(x)) {
                    samples.push_back(numbers.FragmentOf(sample));
                    objectNumbers.Add(samples.back().objectID);
                    materialNumbers.Add(samples.back().materialID);
                }
                builder.AppendDeepPixel(samples);
            }
        });
    }
    Finish(frame, std::move(fragments));
}

void FrameLoader::TakePicture(Frame& frame, Picture picture) {
    WarnOfNotFinite(frame, picture.notFinite);
    const host::ImageFormat format{picture.width, picture.height, picture.hasAlpha,
                                   picture.pixelAspect};
    if (auto* halfs = std::get_if<std::vector<std::uint16_t>>(&picture.components)) {
        frame.picture = host::ImageBitmap::FromHalf(format, std::move(*halfs));
    } else {
        frame.picture = host::ImageBitmap::FromFloat(
            format, std::move(std::get<std::vector<float>>(picture.components)));
    }
}

void FrameLoader::WarnOfNotFinite(const Frame& frame, std::uint64_t count) {
    if (count == 0) return;
    warn(frame.path + ": " + std::to_string(count) + (count == 1 ? " value was" : " values were") +
         " not finite; NaN became 0 and infinity the largest number");
}

// An element that V-Ray has on takes the channel of another of its class when it has none itself.
void FrameLoader::TellVRayWhatIsOn(const Frame& frame) {
    host::RenderElementManager& elements = host::App().elements[production];
    for (int i = 0; i < elements.NumRenderElements(); ++i) {
        host::RenderElement* element = elements.GetRenderElement(i);
        if (!host::IsVRayElement(element->ClassID())) continue;
        const bool isOn =
            std::any_of(frame.elements.begin(), frame.elements.end(),
                        [&](const auto& each) { return each.image && each.element == element; });
        element->SetParameter(host::VRAY_ELEMENT_ENABLED, isOn ? TRUE : FALSE);
    }
}

// Gives the images to their owners.
void FrameLoader::Finish(Frame& frame, std::unique_ptr<host::FragmentBuffer> fragments) {
    // Only documents of 32 bits are made from floats.
    const bool rounded = session.GetInt("bitDepth") != 32;
    if (rounded) frame.picture->Storage()->RoundHalfsTo16Bits();
    frame.picture->Storage()->SetGBuffer(std::move(fragments));
    for (UsedElement& each : frame.elements) {
        if (each.image && rounded) each.image->Storage()->RoundHalfsTo16Bits();
        if (each.image && !vray) each.element->SetBitmap(host::Owned<Bitmap>(each.image.release()));
    }
    if (vray) FillVRay(frame);
}

void FrameLoader::FillVRay(Frame& frame) {
    TellVRayWhatIsOn(frame);
    VRayFrame target(*vray, *frame.picture);
    const auto alpha =
        std::find_if(frame.elements.begin(), frame.elements.end(), [](const UsedElement& each) {
            return each.image && each.element->ClassID() == VRAY_ALPHA_ELEMENT;
        });
    target.AddPicture(alpha != frame.elements.end() ? std::move(alpha->image) : nullptr);
    for (UsedElement& each : frame.elements) {
        if (!each.image) continue;
        target.AddElement(each.element->ClassID(), each.pass->name, std::move(each.image));
    }
}

// The lists name what the file names, unless the user has his own.
void FrameLoader::SetLists() {
    IParamBlock2& block = session.Block();
    const std::vector<host::Node*> objects = identities.Objects();
    const ParamID list = Session::IdOf("objectList");
    if (!session.IsGiven("objectList") &&
        static_cast<std::size_t>(block.Count(list)) != objects.size()) {
        std::vector<ReferenceTarget*> targets(objects.begin(), objects.end());
        block.SetCount(list, 0);
        block.Append(list, static_cast<int>(targets.size()), targets.data());
    }
    constexpr std::uint32_t largestObject = 65535;
    if (!objectNumbers.IsEmpty()) {
        session.SetUnlessGiven("nodeIDList", objectNumbers.List(largestObject));
    }
    const std::string materials = identities.MaterialList();
    if (!materials.empty()) {
        session.SetUnlessGiven("mtlIDList", materials);
    } else if (!materialNumbers.IsEmpty()) {
        session.SetUnlessGiven("mtlIDList", materialNumbers.List(mostMaterials));
    }
}

}  // namespace command
