#include "ui/frame_buffer_prompts.h"

#include <Path.h>
#include <maxapi.h>
#include <maxmsgbox.h>
#include <maxscript/maxscript.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "effect/renderer_kinds.h"
#include "plugin/parameters.h"
#include "plugin/scene_file_state.h"

namespace ui {
namespace {

// Of the block that effect::VRayFrameBufferSettings gives.
constexpr ParamID vrayForce32Bits = 280;

constexpr FrameBufferQuestion backTo16Bits{
    _M("VRay currenty always creates a 32-Bits/Channel 3ds Max Framebuffer.\n"
       " Do you want to switch back to a 16-bit Framebuffer?"),
    _M("renderers.current.output_force32bit_3dsmax_vfb = false")};
constexpr FrameBufferQuestion to32Bits{
    _M("VRay will only create a 16-Bits/Channel 3ds Max Framebuffer.\n"
       " Do you want to enable the 32-bit (HDR) Framebuffer?"),
    _M("renderers.current.output_force32bit_3dsmax_vfb = true")};

// Formats of values above white.
bool IsHdrName(const MSTR& name) {
    MSTR extension;
    SplitFilename(name, nullptr, nullptr, &extension);
    std::basic_string<MCHAR> lower = extension.data();
    for (MCHAR& unit : lower) {
        if (unit >= 'A' && unit <= 'Z') unit = static_cast<MCHAR>(unit - 'A' + 'a');
    }
    constexpr const MCHAR* extensions[] = {_M(".exr"), _M(".fxr"), _M(".hdr"), _M(".pic")};
    return std::any_of(std::begin(extensions), std::end(extensions),
                       [&lower](const MCHAR* known) { return lower == known; });
}

bool MayAsk() {
    return !GetCOREInterface()->GetQuietMode() && !plugin::IsOpeningSceneFile() &&
           !plugin::IsSavingSceneFile();
}

}  // namespace

const FrameBufferQuestion* FrameBufferQuestionFor(const FrameBufferState& state) {
    if (state.bitDepth != 32) return state.force32Bits ? &backTo16Bits : nullptr;
    const bool isEnough =
        state.memoryFrameBuffer || state.force32Bits || IsHdrName(state.outputName);
    return isEnough ? nullptr : &to32Bits;
}

void OfferFrameBufferChange(const effect::PSDOutput& effect, HWND dialog) {
    Interface* host = GetCOREInterface();
    IParamBlock2* vray = effect::VRayFrameBufferSettings(host->GetCurrentRenderer());
    if (!vray || !effect.pblock || !MayAsk()) return;
    const FrameBufferQuestion* question =
        FrameBufferQuestionFor({.bitDepth = effect.pblock->GetInt("bitDepth"_param),
                                .memoryFrameBuffer = vray->GetInt(effect::vrayFrameBufferOn) != 0,
                                .force32Bits = vray->GetInt(vrayForce32Bits) != 0,
                                .outputName = MSTR(host->GetRendFileBI().Name())});
    if (!question) return;
    const int answer =
        MaxMsgBox(dialog, question->text, effect::messageTitle, MB_YESNO | MB_ICONQUESTION);
    if (answer == IDYES) ExecuteMAXScriptScript(question->script, TRUE);
}

}  // namespace ui
