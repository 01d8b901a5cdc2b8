#include "command/save_plan.h"

#include <optional>
#include <system_error>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/frame_list.h"
#include "command/frame_pattern.h"
#include "command/native_path.h"

namespace command {
namespace {

bool Exists(const std::string& path) {
    std::error_code fault;
    return std::filesystem::exists(Native(path), fault);
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

// The host numbers it as it does the document.
std::string SequenceShadow(const std::string& path) {
    // Digits, at least.
    constexpr int hostWidth = 4;
    if (path.empty()) return path;
    const auto pattern = FindFramePattern(path);
    if (!pattern) {
        throw UsageError("--shadow " + path +
                         ": with --frames the name holds the frame number, such as "
                         "shadow.####.exr; put it there");
    }
    if (!IsBeforeExtension(*pattern) || pattern->width != hostWidth) {
        throw UsageError("--shadow " + path +
                         ": the frame number of a shadow pass has four digits and stands right "
                         "before the suffix, as in shadow.####.exr; rename the files so");
    }
    return WithoutFramePattern(*pattern);
}

}  // namespace

void CheckSuffix(const std::string& output) {
    const std::string suffix = AsciiLower(Utf8(Native(output).extension()));
    if (suffix != ".psd" && suffix != ".psb") {
        throw UsageError("-o " + output + ": a document's name ends in .psd or .psb");
    }
}

SavePlan MakePlan(const SaveArguments& arguments) {
    SavePlan plan;
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
        plan.shadow = arguments.shadow;
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
        plan.shadow = SequenceShadow(arguments.shadow);
    }
    CheckSuffix(plan.output);
    return plan;
}

}  // namespace command
