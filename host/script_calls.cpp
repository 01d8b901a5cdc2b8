#include "host/script_calls.h"

#include <algorithm>
#include <string_view>

#include "host/application.h"
#include "host/text.h"
#include "host/vray_frame_buffer.h"

namespace host {
namespace {

using Text = std::basic_string_view<MCHAR>;

// Takes blanks and then the word off the front; false, and nothing taken, when it isn't there.
bool Take(Text& script, Text word) {
    const std::size_t start = std::min(script.find_first_not_of(_M(" \t\r\n")), script.size());
    const MSTR found(std::basic_string<MCHAR>(script.substr(start, word.size())));
    const MSTR wanted{std::basic_string<MCHAR>(word)};
    if (!EqualIgnoringAsciiCase(found.data(), wanted.data())) {
        return false;
    }
    script.remove_prefix(start + word.size());
    return true;
}

std::optional<MSTR> SavedPresetPath(Text script) {
    if (!Take(script, _M("vfbControl")) || !Take(script, _M("#saveglobalccpreset")) ||
        !Take(script, _M("\""))) {
        return std::nullopt;
    }
    const std::size_t end = script.find(_M('"'));
    if (end == Text::npos || script.find_first_not_of(_M(" \t\r\n"), end + 1) != Text::npos) {
        return std::nullopt;
    }
    return MSTR(std::basic_string<MCHAR>(script.substr(0, end)));
}

}  // namespace

std::optional<FPValue> CallScript(const MCHAR* script) {
    const std::optional<MSTR> path = SavedPresetPath(script);
    Renderer* renderer = App().renderer.get();
    auto* frameBuffer =
        renderer
            ? dynamic_cast<VRayFrameBuffer*>(renderer->GetInterface(VRAY_FRAME_BUFFER_INTERFACE))
            : nullptr;
    if (!path || !frameBuffer) {
        return std::nullopt;
    }
    return ScriptBool(frameBuffer->SaveCorrections(path->data()));
}

}  // namespace host
