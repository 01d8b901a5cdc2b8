#include "command/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <system_error>

#include "command/native_path.h"
#include "command/system_message.h"

namespace command {
namespace {

namespace fs = std::filesystem;

// Empty with a fault.
fs::path MakeFolderIn(const fs::path& parent, std::error_code& fault) {
#ifdef _WIN32
    constexpr int mostTries = 100;
    std::random_device random;
    for (int i = 0; i < mostTries; ++i) {
        const fs::path folder = parent / ("veltrane-" + std::to_string(random()));
        // False for one that is there already.
        if (fs::create_directory(folder, fault)) return folder;
        if (fault) return {};
    }
    fault = std::make_error_code(std::errc::file_exists);
    return {};
#else
    std::string name = (parent / "veltrane-XXXXXX").string();
    if (::mkdtemp(name.data())) return name;
    fault.assign(errno, std::generic_category());
    return {};
#endif
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::error_code reason;
    const fs::path parent = fs::temp_directory_path(reason);
    if (!reason) path = Utf8(MakeFolderIn(parent, reason));
    if (reason) {
        const std::string where = parent.empty() ? "the folder for temporary files" : Utf8(parent);
        fault = where + ": " + SystemMessage(reason);
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    if (!path.empty()) fs::remove_all(Native(path), ignored);
}

}  // namespace command
