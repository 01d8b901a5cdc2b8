#include "ui/choose_file.h"

#include <IPathConfigMgr.h>
#include <maxapi.h>

#include "plugin/parameter_accessor.h"
#include "plugin/parameters.h"
#include "plugin/string_table.h"

namespace ui {
namespace {

// In the string table.
constexpr int saveAsString = 7;

FilterList DocumentFilters() {
    FilterList filters;
    for (const MCHAR* text : {_M("Photoshop Document (*.PSD)"), _M("*.psd"),
                              _M("Large Document Format (*.PSB)"), _M("*.psb")}) {
        filters.Append(text);
    }
    return filters;
}

MSTR StartFolder(const MSTR& name) {
    MSTR folder;
    SplitFilename(name, &folder, nullptr, nullptr);
    return folder.isNull() ? MSTR(GetCOREInterface()->GetDir(APP_RENDER_OUTPUT_DIR)) : folder;
}

}  // namespace

void ChooseFile(effect::PSDOutput& effect, HWND parent) {
    if (!effect.pblock) return;
    MSTR name = plugin::NormalizeFilename(effect, MSTR(effect.pblock->GetStr("filename"_param)));
    MSTR folder = StartFolder(name);
    FilterList filters = DocumentFilters();
    const MSTR title(plugin::GetString(saveAsString));
    if (!GetCOREInterface8()->DoMaxSaveAsDialog(parent, title, name, folder, filters)) return;
    MaxSDK::Util::Path path(name);
    if (IPathConfigMgr* paths = IPathConfigMgr::GetPathConfigMgr()) {
        paths->NormalizePathAccordingToSettings(path);
    }
    // The user may have deleted the effect meanwhile.
    if (!effect::PSDOutput::IsLiving(&effect) || !effect.pblock) return;
    effect.pblock->SetValue("filename"_param, 0, path.GetCStr());
    effect.pblock->SetValue("matchRenderOutputFilename"_param, 0, FALSE);
}

}  // namespace ui
