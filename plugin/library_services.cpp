#include "plugin/library_services.h"

#include "plugin/block_changes.h"
#include "plugin/layer_presets.h"
#include "plugin/overwrite_question.h"
#include "plugin/param_dialog.h"
#include "plugin/post_load_migration.h"
#include "plugin/string_table.h"
#include "plugin/warning_switches.h"

namespace plugin {

const effect::LibraryServices& Services() {
    static constexpr effect::LibraryServices services{
        .readWarningSwitches = ReadWarningSwitches,
        .getString = GetString,
        .loadLayerPreset = LoadLayerPreset,
        .makePostLoadCallback = MakePostLoadCallback,
        .parameterChanged = ParameterChanged,
        .askOverwrite = AskOverwrite,
        .createParamDialog = CreateParamDialog,
    };
    return services;
}

}  // namespace plugin
