#include "command/frame_loader.h"

#include <iparamb2.h>
#include <rendererclasses.h>
#include <vrayelements.h>

#include <algorithm>
#include <utility>

#include "command/beauty.h"
#include "command/coverage_entries.h"
#include "command/deep_numbers.h"
#include "command/fragments.h"
#include "command/half_ids.h"
#include "command/host_images.h"
#include "command/library_errors.h"
#include "command/pixel_aspect.h"
#include "command/turn_on_all.h"
#include "command/vray_frame.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/render_loop.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

// Null with other renderers.
host::HostRenderer* VRay() {
    auto* renderer = dynamic_cast<host::HostRenderer*>(host::App().renderer.get());
    return renderer && renderer->ClassID() == VRAY_CLASS_ID ? renderer : nullptr;
}

}  // namespace

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
    std::vector<FrameElement> elements;

    const Description& Describe() const { return file->GetDescription(); }
    std::size_t FramePart() const { return Describe().layers[plan.beauty.layer].part; }
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
      vray(VRay() ? std::make_shared<host::VRayFrameBuffer>() : nullptr),
      elements(session, scene, arguments.elementSettings, vray != nullptr),
      view(session, scene),
      identities(host::App().scene) {
    if (!vray) return;
    if (Look* look = session.GetLook()) vray->SetLook(look->ForFrameBuffer());
    VRay()->SetFrameBuffer(vray);
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
    view.Set(file, frame.FramePart(), warn);

    frame.elements = elements.SetUp(frame.plan.elements, SharesAlpha(frame.plan));
    for (const std::string& name : elements.SettingsWithoutElement(path))
        WarnOnce(std::string(path).append(": no render element fits \"").append(name).append("\""));
    if (arguments.all) TurnOnAll(session, frame.plan, scene);
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
    FrameElements::Release();
}

// Names in the manifest's order, unless it has none or more than there is room for.
void FrameLoader::SetIdentities(const Frame& frame) {
    const auto byCoverage = [&](const Cryptomatte& matte) {
        return EntriesByCoverage(*frame.file, frame.FramePart(), matte);
    };
    if (const Cryptomatte* matte = frame.ObjectMatte()) {
        std::vector<ManifestEntry> entries = matte->manifest.entries;
        if (entries.empty() || identities.ObjectsBeyondLimit(entries) > 0) {
            entries = byCoverage(*matte);
        }
        WarnOfLeftOut(frame, identities.SetObjects(entries), "objects", mostObjects);
        // Only those that the scene file numbers have any.
        for (const UWORD number : identities.ObjectNumbers())
            objectNumbers.Add(number);
    }
    if (const Cryptomatte* matte = frame.MaterialMatte()) {
        std::vector<ManifestEntry> entries = matte->manifest.entries;
        if (entries.empty() || identities.MaterialsBeyondLimit(entries) > 0) {
            entries = byCoverage(*matte);
        }
        WarnOfLeftOut(frame, identities.SetMaterials(entries), "materials", mostMaterials);
    }
}

// V-Ray's elements have its picture's alpha, and are made for that.
bool FrameLoader::SharesAlpha(const PassPlan& plan) const {
    return plan.renderer == Renderer::VRay ||
           (plan.renderer == Renderer::Any && arguments.renderer == "vray");
}

// What of the G-Buffer the effect wants and the file can tell.
DWORD FrameLoader::ChannelsToKeep(const Frame& frame) const {
    const PassPlan& plan = frame.plan;
    const bool deepObjects = plan.deep && plan.deep->objectID;
    const bool deepMaterials = plan.deep && plan.deep->materialID;
    DWORD known = BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_COLOR | BMM_CHAN_REALPIX;
    if (plan.objectMatte || plan.objectID || deepObjects) known |= BMM_CHAN_NODE_ID;
    if (plan.materialMatte || plan.materialID || deepMaterials) known |= BMM_CHAN_MTL_ID;
    if (plan.HasDistances()) known |= BMM_CHAN_Z;
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
    for (FrameElement& each : frame.elements) {
        if (elements.IsUsed(*each.element)) each.inReading = reading.AddImage(each.pass->channels);
    }
}

void FrameLoader::TakeElementImages(Frame& frame, FlatReading& reading) {
    for (FrameElement& each : frame.elements) {
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
        const DeepNumbers numbers(frame.Describe(), frame.FramePart(), deep);
        std::vector<DeepFragment> samples;
        frame.file->ReadDeepRows(
            frame.FramePart(), deep.channels, [&](int /*y*/, const DeepRow& row) {
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
    frame.picture = BitmapOf(std::move(picture));
}

void FrameLoader::WarnOfNotFinite(const Frame& frame, std::uint64_t count) {
    if (count == 0) return;
    warn(frame.path + ": " + std::to_string(count) + (count == 1 ? " value was" : " values were") +
         " not finite; NaN became 0 and infinity the largest number");
}

// Gives the images to their owners.
void FrameLoader::Finish(Frame& frame, std::unique_ptr<host::FragmentBuffer> fragments) {
    // Only documents of 32 bits are made from floats; and a look is for the colours as they are.
    const bool rounded = session.GetInt("bitDepth") != 32 && !session.IsLookInPixels();
    if (rounded) frame.picture->Storage()->RoundHalfsTo16Bits();
    frame.picture->Storage()->SetGBuffer(std::move(fragments));
    for (FrameElement& each : frame.elements) {
        if (each.image && rounded) each.image->Storage()->RoundHalfsTo16Bits();
        if (each.image && !vray) each.element->SetBitmap(host::Owned<Bitmap>(each.image.release()));
    }
    if (vray) FillVRay(frame);
}

void FrameLoader::FillVRay(Frame& frame) {
    FrameElements::TellVRayWhatIsOn(frame.elements);
    VRayFrame target(*vray, *frame.picture);
    const auto alpha =
        std::find_if(frame.elements.begin(), frame.elements.end(), [](const FrameElement& each) {
            return each.image && each.element->ClassID() == VRAY_ALPHA_ELEMENT;
        });
    std::vector<std::string> names;
    for (const FrameElement& each : frame.elements)
        names.push_back(each.pass->name);
    target.AddPicture(alpha != frame.elements.end() ? std::move(alpha->image) : nullptr, names);
    for (FrameElement& each : frame.elements) {
        if (!each.image) continue;
        target.AddElement(each.element->ClassID(), each.pass->name, std::move(each.image),
                          SharesAlpha(frame.plan));
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
