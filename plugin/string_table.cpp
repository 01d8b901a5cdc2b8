#include "plugin/string_table.h"

#include "plugin/library.h"
#include "plugin/load_string.h"

namespace plugin {
namespace {

constexpr int bufferSize = 512;

#ifdef _WIN32

// From the resources of the module.
int Load(int id, MCHAR* buffer) {
    return LoadStringW(Module(), static_cast<UINT>(id), buffer, bufferSize);
}

#else

constexpr StringRow strings[] = {
#define VELTRANE_STRING(id, text) {id, _M(text)},
#include "plugin/strings.inc"
#undef VELTRANE_STRING
};

int Load(int id, MCHAR* buffer) {
    return LoadTableString(strings, id, buffer, bufferSize);
}

#endif

}  // namespace

const MCHAR* GetString(int id) {
    static MCHAR buffer[bufferSize];
    if (!Module()) return nullptr;
    return Load(id, buffer) != 0 ? buffer : nullptr;
}

}  // namespace plugin
