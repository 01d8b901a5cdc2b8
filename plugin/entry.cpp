#include "plugin/entry.h"

#include "effect/psd_output.h"
#include "effect/sync_render_elements.h"
#include "plugin/class_descriptors.h"
#include "plugin/library.h"
#include "plugin/string_table.h"
#include "psdfile/deflate_functions.h"

const MCHAR* LibDescription() {
    return plugin::GetString(1);
}

int LibNumberClasses() {
    return static_cast<int>(plugin::ClassDescriptors().size());
}

ClassDesc* LibClassDesc(int number) {
    const auto descriptors = plugin::ClassDescriptors();
    const bool known = number >= 0 && number < LibNumberClasses();
    return known ? descriptors[static_cast<std::size_t>(number)] : nullptr;
}

// Release 21000, API 52, SDK revision 0.
ULONG LibVersion() {
    return 0x52083400;
}

namespace plugin {
namespace {

// The program's own module, whose resources are then the library's. Where programs have no
// resources any handle but null serves.
HINSTANCE ProgramModule() {
#ifdef _WIN32
    return GetModuleHandleW(nullptr);
#else
    static char program;
    return reinterpret_cast<HINSTANCE>(&program);
#endif
}

}  // namespace

void Attach() {
    constexpr DWORD processAttach = 1;
    if (!Module()) LibraryMain(ProgramModule(), processAttach);
}

std::span<const parameters::Row> EffectParameters() {
    return parameters::effectRows;
}

std::span<const parameters::Row> LayerParameters() {
    return parameters::layerRows;
}

void SyncRenderElements(Effect& effect) {
    constexpr int productionList = 0;
    effect::SyncRenderElements(static_cast<effect::PSDOutput&>(effect), productionList);
}

void UseDeflate(int (*deflateInit2)(z_streamp, int, int, int, int, int, const char*, int),
                int (*deflate)(z_streamp, int), int (*deflateEnd)(z_streamp)) {
    psdfile::SetDeflateFunctions({deflateInit2, deflate, deflateEnd});
}

}  // namespace plugin
