#include "command/save.h"

#include <maxapi.h>
#include <rendererclasses.h>

#include <array>
#include <cerrno>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>

#include "command/failure.h"
#include "command/frame_loader.h"
#include "command/host_images.h"
#include "command/isal_deflate.h"
#include "command/native_path.h"
#include "command/render_file.h"
#include "command/save_plan.h"
#include "command/scene_file.h"
#include "command/session.h"
#include "command/set_up_renderer.h"
#include "command/setting.h"
#include "command/settings_in_use.h"
#include "command/size_text.h"
#include "command/write_fault.h"
#include "host/application.h"
#include "host/image_bitmap.h"
#include "host/render_loop.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

namespace fs = std::filesystem;

void ChooseDeflate(bool fast) {
    if (!fast) {
        plugin::UseDeflate(deflateInit2_, deflate, deflateEnd);
        return;
    }
#ifdef VELTRANE_ISAL
    plugin::UseDeflate(IsalDeflateInit2, IsalDeflate, IsalDeflateEnd);
#else
    throw UsageError("--deflate fast: this build has no ISA-L; use --deflate zlib");
#endif
}

// What the header of a document says. Zeros for a file that has none.
struct DocumentHeader {
    int version = 0;
    int channels = 0;
};

DocumentHeader ReadHeader(const fs::path& document) {
    constexpr std::size_t versionByte = 5;
    constexpr std::size_t channelsByte = 12;
    std::array<char, channelsByte + 2> start{};
    std::ifstream(document, std::ios::binary).read(start.data(), start.size());
    const auto byte = [&](std::size_t at) {
        return static_cast<int>(static_cast<unsigned char>(start[at]));
    };
    return {byte(versionByte), byte(channelsByte) << 8 | byte(channelsByte + 1)};
}

// What the format's readers take, those of the merged image included.
constexpr int mostChannels = 56;

// One run of frames through the effect.
class FrameRun : public CheckAbortCallback {
  public:
    FrameRun(const SaveArguments& saveArguments, const SavePlan& framePlan, Session& hostSession,
             const SceneDescription* scene, Console& userConsole)
        : plan(framePlan),
          session(hostSession),
          console(userConsole),
          images([this](const std::string& text) { console.Warning(text); }),
          loader(saveArguments, session, scene,
                 [this](const std::string& text) { console.Warning(text); }) {}

    bool Render() {
        for (const int frame : {plan.frames.front(), plan.frames.back()}) {
            if (!session.DocumentPath(frame, plan.isSequence).empty()) continue;
            console.Error(plan.output +
                          ": the path with its frame number has more than 259 "
                          "characters; choose a shorter one with -o");
            return false;
        }
        document = session.DocumentPath(plan.frames.front(), plan.isSequence);
        WarnOfLook();
        host::App().imageLoader = [this](const std::string& path) { return images.Load(path); };
        host::App().log.SetSink([this](const host::LogRecord& record) { TakeEntry(record); });
        host::RenderJob job;
        job.frames = plan.frames;
        job.provider = [this](int frame, std::string& error) { return Provide(frame, error); };
        job.callback = this;
        // A sequence of one frame is numbered too.
        if (!plan.isSequence) job.timeType = REND_TIMESINGLE;
        if (plan.isSequence && plan.frames.size() == 1) job.timeType = REND_TIMERANGE;
        host::RenderFrames(job);
        FinishFrame();
        console.EndProgress();
        host::App().log.SetSink({});
        host::App().imageLoader = {};
        return saved == plan.frames.size();
    }

    BOOL Check() override { return FALSE; }
    BOOL Progress(int done, int total) override {
        allWritten = total > 0 && done == total;
        if (total > 0) ShowProgress(double(done) / total);
        return FALSE;
    }
    void SetTitle(const MCHAR*) override {}

  private:
    // What the frame in hand has come to.
    enum class State { None, Unreadable, Given };

    void ShowProgress(double ofFrame) {
        const double before = static_cast<double>(begun == 0 ? 0 : begun - 1);
        console.Progress(
            static_cast<int>(100 * (before + ofFrame) / static_cast<double>(plan.frames.size())));
    }

    void TakeEntry(const host::LogRecord& record) {
        const int systemError = errno;
        const auto faultOfImage = [this](const std::string& path) {
            const host::RenderSettings& render = host::App().settings.render;
            return images.FaultOf(path, render.width, render.height);
        };
        const std::string text =
            ExplainEntry(host::ToUtf8(record.text.data()), document, systemError, faultOfImage);
        if ((record.type & SYSLOG_ERROR) != 0) {
            console.Error(text);
            failed = true;
            if (begun == 0) refused = true;
        } else if ((record.type & SYSLOG_WARN) != 0) {
            console.Warning(text);
        }
    }

    host::Owned<host::ImageBitmap> Provide(int frame, std::string& error) {
        FinishFrame();
        ++begun;
        state = State::Unreadable;
        failed = false;
        allWritten = false;
        if (Look* look = session.GetLook()) look->TakeWritten();
        if (refused) {
            error = "the effect saves nothing";
            return nullptr;
        }
        document = session.DocumentPath(frame, plan.isSequence);
        try {
            host::Owned<host::ImageBitmap> bitmap = Read(plan.inputOf(frame));
            state = State::Given;
            // What the log tells of the frame from here on is about its document.
            errno = 0;
            return bitmap;
        } catch (const std::exception& fault) {
            error = fault.what();
            console.Error(error);
            return nullptr;
        }
    }

    host::Owned<host::ImageBitmap> Read(const std::string& path) {
        std::error_code none;
        if (fs::equivalent(Native(path), Native(document), none)) {
            throw InputError(path +
                             ": the document would overwrite it; choose another name with "
                             "-o");
        }
        return loader.Load(path);
    }

    void WarnOfLook() const {
        const Look* look = session.GetLook();
        if (!look || session.GetInt("vrayColorCorrections") != 0) return;
        console.Warning("--lut " + look->File() +
                        ": the document is without it, since vrayColorCorrections is off");
    }

    // The effect keeps the look in the pixels when it can't have the table, without a word.
    void WarnOfLookInPixels() {
        Look* look = session.GetLook();
        if (!session.IsLookInLayer() || look->TakeWritten()) return;
        if (std::exchange(toldOfLookInPixels, true)) return;
        console.Warning(document + ": the look of " + look->File() +
                        " is in the pixels and no layer: " + look->WhyNotWritten());
    }

    // Tells what became of the frame that the effect had last.
    void FinishFrame() {
        if (std::exchange(state, State::None) == State::Given && !failed) {
            std::error_code fault;
            const std::uintmax_t bytes = fs::file_size(Native(document), fault);
            if (allWritten && !fault) {
                ++saved;
                WarnOfLookInPixels();
                const DocumentHeader header = ReadHeader(Native(document));
                if (header.channels > mostChannels) {
                    console.Warning(document + ": it has " + std::to_string(header.channels) +
                                    " channels, and readers take 56 at most; make mattes layers "
                                    "in place of channels, such as --set outputObjectsAs=1");
                }
                const host::RenderSettings& render = host::App().settings.render;
                console.Say("saved " + document + " (" + std::to_string(render.width) + "x" +
                            std::to_string(render.height) + ", " +
                            std::to_string(session.GetInt("bitDepth")) + " bits, " +
                            (header.version == 2 ? "PSB" : "PSD") + ", " + SizeText(bytes) + ")");
            } else {
                console.Error(document + ": the document was not written; check its path");
            }
        }
        if (begun > 0) ShowProgress(1.0);
    }

    const SavePlan& plan;
    Session& session;
    Console& console;
    HostImages images;
    FrameLoader loader;

    // Frames so far.
    std::size_t begun = 0;
    std::size_t saved = 0;
    // The effect said before the first frame that it saves none.
    bool refused = false;
    bool toldOfLookInPixels = false;

    // Of the frame in hand.
    State state = State::None;
    std::string document;
    bool failed = false;
    bool allWritten = false;
};

ProgressStyle StyleOf(const std::string& name) {
    if (name == "bar") return ProgressStyle::Bar;
    if (name == "lines") return ProgressStyle::Lines;
    return name == "auto" && IsTerminal(stderr) ? ProgressStyle::Bar : ProgressStyle::None;
}

// What is switched off isn't missed.
bool AsksForNothing(const Setting& setting) {
    const int* number = std::get_if<int>(&setting.value);
    return setting.row->type == parameters::Type::Bool && number && *number == 0;
}

void WarnOfUnused(const std::vector<Setting>& settings, const std::string& where,
                  Console& console) {
    for (const Setting& setting : settings) {
        if (IsSettingInUse(setting.row->name) || AsksForNothing(setting)) continue;
        console.Warning(where + std::string(setting.row->name) +
                        ": it is kept for old scenes and changes no document");
    }
}

std::vector<Setting> ParseSettings(const SaveArguments& arguments) {
    std::vector<Setting> settings;
    for (const std::string& text : arguments.settings) {
        settings.push_back(ParseSetting(text, plugin::EffectParameters()));
        const Setting& setting = settings.back();
        if (setting.row->name == "shadowPassSource" && !arguments.shadow.empty()) {
            throw UsageError(
                "--shadow and --set shadowPassSource both name the shadow pass; leave one of them");
        }
        if (setting.row->name != "filename") continue;
        if (!arguments.output.empty()) {
            throw UsageError("-o and --set filename both name the document; leave one of them");
        }
        CheckSuffix(std::get<std::string>(setting.value));
    }
    return settings;
}

// The class that effects know the renderer by.
Class_ID RendererClass(const SaveArguments& arguments, const SavePlan& plan) {
    if (arguments.renderer == "none") return {};
    // Of all renderers' frame buffers V-Ray's alone has a look.
    if (arguments.renderer == "vray" || !arguments.lut.empty()) return VRAY_CLASS_ID;
    try {
        const auto file = OpenRenderFile(plan.inputOf(plan.frames.front()));
        return RendererClassOf(file->GetDescription());
    } catch (const std::exception&) {
        // The frame itself will tell.
        return {};
    }
}

}  // namespace

bool Save(const SaveArguments& arguments, Console& console) {
    if (arguments.quiet) console.BeQuiet();
    console.ShowProgressAs(StyleOf(arguments.progress));
    const std::vector<Setting> settings = ParseSettings(arguments);
    const SavePlan plan = MakePlan(arguments);
    std::optional<SceneDescription> scene;
    if (!arguments.scene.empty()) scene = ReadSceneFile(arguments.scene);
    const SceneDescription* sceneOrNull = scene ? &*scene : nullptr;
    WarnOfUnused(settings, "--set ", console);
    if (scene) WarnOfUnused(scene->parameters, scene->path + ": effect.parameters.", console);
    ChooseDeflate(arguments.fastDeflate);
    Session session(arguments, plan, settings, sceneOrNull, RendererClass(arguments, plan));
    return FrameRun(arguments, plan, session, sceneOrNull, console).Render();
}

}  // namespace command
