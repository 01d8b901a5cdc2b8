#include "ui/file_name_field.h"

#include <IPathConfigMgr.h>

#include <string>

#include "plugin/parameters.h"

namespace ui {
namespace {

constexpr std::size_t longestTypedName = 260;

constexpr const MCHAR* noFileName = _M(" Please assign a filename in the Render Setup dialog.");

bool IsDerived(const effect::PSDOutput& effect) {
    return effect.pblock->GetInt("matchRenderOutputFilename"_param) != FALSE;
}

MSTR AsTheSceneKeepsIt(const MSTR& name) {
    MaxSDK::Util::Path path(name);
    if (IPathConfigMgr* paths = IPathConfigMgr::GetPathConfigMgr()) {
        paths->NormalizePathAccordingToSettings(path);
    }
    return MSTR(path.GetCStr());
}

class NotificationsOff {
  public:
    explicit NotificationsOff(IParamBlock2& quietBlock) : block(quietBlock) {
        block.EnableNotifications(FALSE);
    }
    ~NotificationsOff() { block.EnableNotifications(TRUE); }
    NotificationsOff(const NotificationsOff&) = delete;
    NotificationsOff& operator=(const NotificationsOff&) = delete;

  private:
    IParamBlock2& block;
};

}  // namespace

FileNameField ShowFileName(effect::PSDOutput& effect, int width, const TextWidth& widthOf) {
    if (!effect.pblock) return {};
    if (!IsDerived(effect)) {
        return {.enabled = true, .text = MSTR(effect.pblock->GetStr("filename"_param))};
    }
    MSTR name;
    if (!effect.ResolveOutputFileName(name, false, 0)) {
        effect.shortFilename = MSTR();
        return {.enabled = false, .text = MSTR(noFileName)};
    }
    effect.shortFilename = ShortenedPath(AsTheSceneKeepsIt(name), width, widthOf);
    return {.enabled = false, .text = effect.shortFilename};
}

bool IsFileFormatEnabled(const effect::PSDOutput& effect) {
    return effect.pblock && IsDerived(effect);
}

void TakeTypedFileName(effect::PSDOutput& effect, const MSTR& text) {
    if (!effect.pblock || IsDerived(effect)) return;
    std::basic_string<MCHAR> name = text.data();
    // The empty text asks for a name by default. To pass through the field that shows it asks for
    // nothing.
    if (name.empty() && MSTR(effect.pblock->GetStr("filename"_param)).isNull()) return;
    if (name.size() > longestTypedName) name.resize(longestTypedName);
    const NotificationsOff quiet(*effect.pblock);
    effect.pblock->SetValue("filename"_param, 0, name.c_str());
}

}  // namespace ui
