// An application with one effect in it, as a user has it before a render, and what the user then
// sees: boxes, log lines, files.
#pragma once

#include <Path.h>
#include <bitmap.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <maxapi.h>
#include <notify.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "effect/psd_output.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/image_bitmap.h"
#include "host/render_loop.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "tests/host/temporary_folder.h"

// The host keeps entries of one frame in its log and its boxes; a test names each that it expects.
struct LogLine {
    DWORD type;
    bool dialogue;
    std::string title;
    std::string text;

    friend bool operator==(const LogLine&, const LogLine&) = default;
};

inline void PrintTo(const LogLine& line, std::ostream* out) {
    *out << "log type " << line.type << (line.dialogue ? " with dialog" : "") << " [" << line.title
         << "] \"" << line.text << '"';
}

inline LogLine Error(const std::string& text) {
    return {SYSLOG_ERROR, false, "veltrane", text};
}
inline LogLine ErrorWithDialog(const std::string& text) {
    return {SYSLOG_ERROR, true, "veltrane", text};
}
inline LogLine WarningWithDialog(const std::string& text) {
    return {SYSLOG_WARN, true, "veltrane", text};
}

struct Box {
    UINT type;
    UINT exType;
    std::string title;
    std::string text;

    friend bool operator==(const Box&, const Box&) = default;
};

inline void PrintTo(const Box& box, std::ostream* out) {
    *out << "box type " << box.type << '/' << box.exType << " [" << box.title << "] \"" << box.text
         << '"';
}

// The system's numbers, spelt out: OK or Yes and No, with the exclamation or the question icon.
inline Box OkBox(const std::string& text) {
    return {0x30, 0, "veltrane", text};
}
inline Box YesNoBox(const std::string& text) {
    return {0x34, 0, "veltrane", text};
}
inline Box QuestionBoxWithTick(const std::string& text) {
    return {0x24, 1, "veltrane", text};
}

inline MSTR Text(const std::filesystem::path& path) {
    return host::FromNativePath(path);
}

inline std::string FileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    ASSERT_TRUE(file.good()) << path;
}

// The sample that Image gives a component: no two pixels of a small image are alike.
constexpr std::uint16_t ImageSample(int x, int y, int component) {
    return static_cast<std::uint16_t>(1000 * (component + 1) + 100 * y + 7 * x);
}

inline host::Owned<host::ImageBitmap> Image(int width, int height, bool hasAlpha = true,
                                            float aspect = 1.0F) {
    std::vector<std::uint16_t> components;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int component = 0; component < 4; ++component) {
                components.push_back(ImageSample(x, y, component));
            }
        }
    }
    return host::ImageBitmap::FromUnsigned16({width, height, hasAlpha, aspect},
                                             std::move(components));
}

// Counts what an effect tells, and answers what a test says.
class RecordingCallback : public CheckAbortCallback {
  public:
    BOOL Check() override {
        ++checks;
        return abort;
    }
    BOOL Progress(int done, int total) override {
        progress.emplace_back(done, total);
        return FALSE;
    }
    void SetTitle(const MCHAR*) override {}

    BOOL abort = FALSE;
    int checks = 0;
    std::vector<std::pair<int, int>> progress;
};

// Fails a test that leaves an error, a warning or a box behind that it didn't take.
class EffectTest : public testing::Test {
  protected:
    EffectTest() {
        host::ResetApplication();
        plugin::Attach();
        for (const auto& [number, name] : {std::pair{APP_SCENE_DIR, "scenes"},
                                           {APP_PLUGCFG_DIR, "config"},
                                           {APP_RENDER_OUTPUT_DIR, "output"}}) {
            std::filesystem::create_directories(folder.path / name);
            Host().paths.SetDir(number, Text(folder.path / name));
        }
        Render().output.SetName(Text(folder.path / "frame.exr"));
        Host().boxes.SetResponder([this](const host::BoxRecord& box) {
            return host::BoxAnswer{answer == 0 ? box.answer.button : answer, tick};
        });
        effect = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
        Host().effects.emplace_back(effect);
    }

    ~EffectTest() override {
        for (const LogLine& line : TakeLog()) {
            if (line.type == SYSLOG_ERROR || line.type == SYSLOG_WARN) {
                ADD_FAILURE() << "unexpected " << testing::PrintToString(line);
            }
        }
        EXPECT_THAT(TakeBoxes(), testing::IsEmpty());
        host::ResetApplication();
    }

    static host::Application& Host() { return host::App(); }
    static host::RenderSettings& Render() { return host::App().settings.render; }

    // What came since the last call.
    std::vector<LogLine> TakeLog() {
        std::vector<LogLine> lines;
        for (const host::LogRecord& record : Host().log.Entries()) {
            lines.push_back({record.type, record.dialogue, host::ToUtf8(record.title),
                             host::ToUtf8(record.text)});
        }
        Host().log.Clear();
        return lines;
    }
    std::vector<Box> TakeBoxes() {
        std::vector<Box> boxes;
        for (const host::BoxRecord& record : Host().boxes.Shown()) {
            boxes.push_back({record.type, record.exType, host::ToUtf8(record.caption),
                             host::ToUtf8(record.text)});
        }
        Host().boxes.Clear();
        return boxes;
    }

    host::HostRenderer& UseRenderer(Class_ID id) {
        auto* renderer = new host::HostRenderer(id);
        Host().renderer.reset(renderer);
        return *renderer;
    }

    // The settings of the effect.
    void Set(ParamID id, int value) { effect->pblock->SetValue(id, 0, value); }
    void SetText(ParamID id, const MSTR& value) { effect->pblock->SetValue(id, 0, value.data()); }
    void SetFilename(const std::filesystem::path& path) {
        Set("matchRenderOutputFilename"_param, FALSE);
        SetText("filename"_param, Text(path));
    }

    // One frame from the first notification to the last, as the application's own loop does it.
    void RenderFrame(Bitmap* bitmap, CheckAbortCallback* callback = nullptr) {
        effect->RenderBegin(time, 0);
        RenderStartedFrame(bitmap, callback);
        effect->RenderEnd(time);
    }
    // The frame alone, in a render that began.
    void RenderStartedFrame(Bitmap* bitmap, CheckAbortCallback* callback = nullptr) {
        context.renderer = frameRenderer ? frameRenderer : Host().renderer.get();
        context.time = time;
        host::Broadcast(NOTIFY_PRE_RENDERFRAME, &context);
        effect->Apply(time, bitmap, &context, callback);
        host::Broadcast(NOTIFY_POST_RENDERFRAME, &context);
    }

    [[nodiscard]] std::filesystem::path File(const char* name) const { return folder.path / name; }
    [[nodiscard]] bool Exists(const char* name) const {
        return std::filesystem::exists(File(name));
    }

    TemporaryFolder folder;
    // Owned by the application.
    effect::PSDOutput* effect = nullptr;
    RenderGlobalContext context;
    // What the frame's context names as its renderer; null for the current one.
    Renderer* frameRenderer = nullptr;
    TimeValue time = 0;
    // The user's button; 0 presses the safe one.
    int answer = 0;
    bool tick = false;
};
