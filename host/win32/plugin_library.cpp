#include "host/win32/plugin_library.h"

#include <windows.h>

#include <string>

#include "host/input_error.h"

namespace host {
namespace {

// Of the release that this host stands for: 21000, API 52.
constexpr ULONG hostRelease = 0x52083400;

std::string Utf8(const std::filesystem::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

template <class Function>
Function* EntryPoint(HMODULE module, const char* name, const std::filesystem::path& file) {
    const FARPROC address = GetProcAddress(module, name);
    if (!address) {
        throw InputError(Utf8(file) + ": is no plug-in; it has no function " + name);
    }
    // The system gives every function in one type.
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& file) {
    HMODULE module = LoadLibraryW(file.c_str());
    if (!module) {
        throw InputError(Utf8(file) + ": cannot be loaded (system error " +
                         std::to_string(GetLastError()) + ")");
    }
    auto* const description = EntryPoint<const MCHAR*()>(module, pluginEntryPoints[0], file);
    auto* const count = EntryPoint<int()>(module, pluginEntryPoints[1], file);
    classDesc_ = EntryPoint<ClassDesc*(int)>(module, pluginEntryPoints[2], file);
    auto* const version = EntryPoint<ULONG()>(module, pluginEntryPoints[3], file);
    version_ = version();
    if (version_ != hostRelease) {
        throw InputError(Utf8(file) + ": was made for another release of the application");
    }
    description_ = MSTR(description());
    for (int i = 0; i < count(); ++i) {
        if (ClassDesc* desc = classDesc_(i)) classes_.push_back(desc);
    }
}

}  // namespace host
