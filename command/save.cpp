#include "command/save.h"

#include <gamma.h>
#include <iparamb2.h>
#include <maxapi.h>
#include <sfx.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <utility>

#include "command/ascii_case.h"
#include "command/beauty.h"
#include "command/failure.h"
#include "command/frame_list.h"
#include "command/frame_pattern.h"
#include "command/isal_deflate.h"
#include "command/number_text.h"
#include "command/render_file.h"
#include "command/setting.h"
#include "command/settings_in_use.h"
#include "command/write_fault.h"
#include "host/application.h"
#include "host/image_bitmap.h"
#include "host/render_loop.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

namespace fs = std::filesystem;

fs::path Native(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::string Utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool Exists(const std::string& path) {
    std::error_code fault;
    return fs::exists(Native(path), fault);
}

// What is read and what is written, before the effect has its say.
struct Plan {
    // Of one frame when the input is no sequence.
    std::vector<int> frames;
    bool isSequence = false;
    std::function<std::string(int frame)> inputOf;
    // Without the frame number, which the host puts before the suffix.
    std::string output;
};

void CheckSuffix(const std::string& output) {
    const std::string suffix = AsciiLower(Utf8(Native(output).extension()));
    if (suffix != ".psd" && suffix != ".psb") {
        throw UsageError("-o " + output + ": a document's name ends in .psd or .psb");
    }
}

std::string WithDocumentSuffix(const std::string& path) {
    return Utf8(Native(path).replace_extension(".psd"));
}

std::string SequenceOutput(const SaveArguments& arguments, const FramePattern& input) {
    if (arguments.output.empty()) return WithDocumentSuffix(WithoutFramePattern(input));
    const auto pattern = FindFramePattern(arguments.output);
    if (!pattern) return arguments.output;
    if (!IsBeforeExtension(*pattern)) {
        throw UsageError("-o " + arguments.output +
                         ": the frame number of a document stands right before its suffix; move " +
                         pattern->text + " there or leave it out");
    }
    return WithoutFramePattern(*pattern);
}

Plan MakePlan(const SaveArguments& arguments) {
    Plan plan;
    const auto pattern = Exists(arguments.input) && arguments.frames.empty()
                             ? std::nullopt
                             : FindFramePattern(arguments.input);
    if (arguments.frames.empty()) {
        if (pattern) {
            throw UsageError(arguments.input + ": there is no such file; to read " + pattern->text +
                             " as a frame number give the frames, such as --frames 1-10");
        }
        plan.frames = {0};
        plan.inputOf = [path = arguments.input](int) { return path; };
        plan.output =
            arguments.output.empty() ? WithDocumentSuffix(arguments.input) : arguments.output;
    } else {
        plan.frames = ParseFrames(arguments.frames);
        if (!pattern) {
            throw UsageError(arguments.input +
                             ": with --frames the name holds the frame number, such as "
                             "shot.####.exr; put it there or leave --frames out");
        }
        plan.isSequence = true;
        plan.inputOf = [pattern = *pattern](int frame) { return pattern.PathOf(frame); };
        plan.output = SequenceOutput(arguments, *pattern);
    }
    CheckSuffix(plan.output);
    return plan;
}

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

// The application set up for one save; put back to its start when the save is over.
class Session {
  public:
    Session(const SaveArguments& arguments, const Plan& plan,
            const std::vector<Setting>& settings) {
        host::ResetApplication();
        host::Application& app = host::App();
        app.settings.quiet = true;
        // Nothing of a document may change from run to run.
        app.settings.randomSeed = 1;
        app.settings.render.output.name = host::FromUtf8(plan.output);
        gammaMgr.dithTrue = FALSE;
        gammaMgr.enable = arguments.gamma ? TRUE : FALSE;
        if (arguments.gamma) gammaMgr.SetFileOutGamma(*arguments.gamma);

        for (int i = 0; i < LibNumberClasses(); ++i)
            app.classes.Add(LibClassDesc(i));
        ClassDesc* wanted = LibClassDesc(0);
        auto* effect = static_cast<Effect*>(
            app.classes.CreateInstance(wanted->SuperClassID(), wanted->ClassID()));
        app.effects.emplace_back(effect);
        block = effect->GetParamBlock(0);

        Set("matchRenderOutputFilename=false");
        Set("filename=" + plan.output);
        for (const Setting& setting : settings)
            Apply(setting, *block);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { host::ResetApplication(); }

    int GetInt(std::string_view name) const { return block->GetInt(IdOf(name)); }

    // Where the effect puts the document; empty when the numbered path is too long for the host.
    std::string DocumentPath(int frame, bool numbered) const {
        std::string path = host::ToUtf8(block->GetStr(IdOf("filename")));
        if (GetInt("matchRenderOutputFilename") != 0) {
            path =
                Utf8(fs::absolute(Native(host::ToUtf8(host::App().settings.render.output.Name())))
                         .replace_extension(GetInt("fileFormat") != 0 ? ".psb" : ".psd"));
        }
        if (!numbered) return path;
        constexpr std::size_t longestPath = 260;
        std::array<MCHAR, longestPath> name{};
        const bool fits =
            BMMCreateNumberedFilename(host::FromUtf8(path).data(), frame, name.data(), name.size());
        return fits ? host::ToUtf8(name.data()) : std::string();
    }

  private:
    static ParamID IdOf(std::string_view name) {
        const auto rows = plugin::EffectParameters();
        return std::find_if(rows.begin(), rows.end(),
                            [&](const parameters::Row& row) { return row.name == name; })
            ->id;
    }

    void Set(const std::string& text) {
        Apply(ParseSetting(text, plugin::EffectParameters()), *block);
    }

    IParamBlock2* block = nullptr;
};

std::string SizeText(std::uintmax_t bytes) {
    const auto number = static_cast<double>(bytes);
    return bytes < 100'000 ? NumberText(number / 1e3, 1) + " kB"
                           : NumberText(number / 1e6, 1) + " MB";
}

// Whether the document on disk is of the large format, whatever its name says.
bool IsLargeFormat(const fs::path& document) {
    constexpr std::size_t versionByte = 5;
    std::array<char, versionByte + 1> start{};
    std::ifstream(document, std::ios::binary).read(start.data(), start.size());
    return start[versionByte] == 2;
}

// One run of frames through the effect.
class FrameRun : public CheckAbortCallback {
  public:
    FrameRun(const SaveArguments& saveArguments, const Plan& framePlan, Session& hostSession,
             Console& userConsole)
        : arguments(saveArguments), plan(framePlan), session(hostSession), console(userConsole) {}

    bool Render() {
        for (const int frame : {plan.frames.front(), plan.frames.back()}) {
            if (!session.DocumentPath(frame, plan.isSequence).empty()) continue;
            console.Error(plan.output +
                          ": the path with its frame number has more than 259 "
                          "characters; choose a shorter one with -o");
            return false;
        }
        document = session.DocumentPath(plan.frames.front(), plan.isSequence);
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
        const std::string text =
            ExplainEntry(host::ToUtf8(record.text.data()), document, systemError);
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
        const std::unique_ptr<RenderFile> file = OpenRenderFile(path);
        const Beauty beauty = ChooseBeauty(file->GetDescription(), arguments.beauty);
        Picture picture = file->Read(beauty);
        for (const std::string& warning : file->GetDescription().warnings) {
            if (!told.insert(warning).second) continue;
            console.Warning(std::string(path).append(": ").append(warning));
        }
        if (picture.notFinite > 0) {
            console.Warning(path + ": " + std::to_string(picture.notFinite) +
                            (picture.notFinite == 1 ? " value was" : " values were") +
                            " not finite; NaN became 0 and infinity the largest number");
        }
        host::RenderSettings& render = host::App().settings.render;
        width = render.width = picture.width;
        height = render.height = picture.height;
        host::Owned<host::ImageBitmap> bitmap = ToBitmap(std::move(picture));
        // Only documents of 32 bits are made from floats.
        if (session.GetInt("bitDepth") != 32) bitmap->Storage()->RoundHalfsTo16Bits();
        return bitmap;
    }

    static host::Owned<host::ImageBitmap> ToBitmap(Picture picture) {
        const host::ImageFormat format{picture.width, picture.height, picture.hasAlpha,
                                       picture.pixelAspect};
        if (auto* halfs = std::get_if<std::vector<std::uint16_t>>(&picture.components)) {
            return host::ImageBitmap::FromHalf(format, std::move(*halfs));
        }
        return host::ImageBitmap::FromFloat(
            format, std::move(std::get<std::vector<float>>(picture.components)));
    }

    // Tells what became of the frame that the effect had last.
    void FinishFrame() {
        if (std::exchange(state, State::None) == State::Given && !failed) {
            std::error_code fault;
            const std::uintmax_t bytes = fs::file_size(Native(document), fault);
            if (allWritten && !fault) {
                ++saved;
                console.Say("saved " + document + " (" + std::to_string(width) + "x" +
                            std::to_string(height) + ", " +
                            std::to_string(session.GetInt("bitDepth")) + " bits, " +
                            (IsLargeFormat(Native(document)) ? "PSB" : "PSD") + ", " +
                            SizeText(bytes) + ")");
            } else {
                console.Error(document + ": the document was not written; check its path");
            }
        }
        if (begun > 0) ShowProgress(1.0);
    }

    const SaveArguments& arguments;
    const Plan& plan;
    Session& session;
    Console& console;

    // Frames so far.
    std::size_t begun = 0;
    std::size_t saved = 0;
    // The effect said before the first frame that it saves none.
    bool refused = false;
    // Warnings that a whole sequence shares are told once.
    std::set<std::string> told;

    // Of the frame in hand.
    State state = State::None;
    std::string document;
    int width = 0;
    int height = 0;
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

std::vector<Setting> ParseSettings(const SaveArguments& arguments) {
    std::vector<Setting> settings;
    for (const std::string& text : arguments.settings) {
        settings.push_back(ParseSetting(text, plugin::EffectParameters()));
        const Setting& setting = settings.back();
        if (setting.row->name != "filename") continue;
        if (!arguments.output.empty()) {
            throw UsageError("-o and --set filename both name the document; leave one of them");
        }
        CheckSuffix(std::get<std::string>(setting.value));
    }
    return settings;
}

}  // namespace

bool Save(const SaveArguments& arguments, Console& console) {
    if (arguments.quiet) console.BeQuiet();
    console.ShowProgressAs(StyleOf(arguments.progress));
    const std::vector<Setting> settings = ParseSettings(arguments);
    const Plan plan = MakePlan(arguments);
    for (const Setting& setting : settings) {
        if (IsSettingInUse(setting.row->name) || AsksForNothing(setting)) continue;
        console.Warning("--set " + std::string(setting.row->name) +
                        ": this version does nothing with it yet");
    }
    ChooseDeflate(arguments.fastDeflate);
    Session session(arguments, plan, settings);
    return FrameRun(arguments, plan, session, console).Render();
}

}  // namespace command
