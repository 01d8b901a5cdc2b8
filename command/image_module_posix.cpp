#include "command/image_module.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "command/failure.h"

namespace command {
namespace {

namespace fs = std::filesystem;

constexpr const char* moduleName = "libveltrane_images.so";

fs::path FindModule() {
    std::error_code fault;
    const fs::path folder = fs::read_symlink("/proc/self/exe", fault).parent_path();
    const fs::path beside = folder / moduleName;
    return fs::exists(beside, fault) ? beside : folder / "../lib/veltrane" / moduleName;
}

// Loaded once and kept. Null when it can't be, with the reason in dlerror.
OpenDecoderFunction* LoadModule() {
    void* module = dlopen(FindModule().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) return nullptr;
    void* symbol = dlsym(module, openDecoderSymbol);
    // What dlsym gives of a function is its address; the system says so.
    return reinterpret_cast<OpenDecoderFunction*>(symbol);
}

}  // namespace

std::unique_ptr<ImageDecoder> OpenImageDecoder(const std::string& path, const ImageFormat& format,
                                               const char* bytes, std::size_t size) {
    static OpenDecoderFunction* const open = LoadModule();
    if (!open) {
        throw InputError(path + ": the reader of " + std::string(format.title) + " files, " +
                         moduleName + ", can't be loaded; install veltrane again");
    }
    return std::unique_ptr<ImageDecoder>(open(path, format, bytes, size));
}

}  // namespace command
