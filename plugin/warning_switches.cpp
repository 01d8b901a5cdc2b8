#include "plugin/warning_switches.h"

#include "plugin/config_file.h"

namespace plugin {

effect::WarningSwitches ReadWarningSwitches() {
    ConfigFile config;
    config.SetSection(_M("Warnings"));
    const auto isSet = [&config](const MCHAR* key) {
        std::uint32_t value = 0;
        return config.ReadInt(key, value) && value != 0;
    };
    return {
        .disableVrayFrameBufferWarnings = isSet(_M("DisableVrayFrameBufferWarnings")),
        .disableVrayProgressiveSamplerWarning = isSet(_M("DisableVrayProgressiveSamplerWarning"))};
}

}  // namespace plugin
