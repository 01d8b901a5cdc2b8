#include "command/sidecar_file.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <ios>
#include <system_error>

#include "command/failure.h"
#include "command/native_path.h"
#include "command/without_links.h"

namespace command {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(const std::string& name) {
    try {
        return Native(name);
    } catch (const std::exception&) {
        // No text, and so the name of no file where names are text.
        throw InputError("is missing");
    }
}

void CheckName(const std::string& name) {
    if (name.empty()) throw InputError("has no name");
    if (name.find('\\') != std::string::npos) {
        throw InputError("has a backslash in its name; the name must be a path with slashes");
    }
    const fs::path path = PathOf(name);
    const bool hasDrive = name.size() > 1 && name[1] == ':';
    if (path.is_absolute() || path.has_root_path() || hasDrive) {
        throw InputError("is named by an absolute path; it must stand in the image's folder");
    }
    if (name.find('\0') != std::string::npos ||
        std::any_of(path.begin(), path.end(), [](const fs::path& each) { return each == ".."; })) {
        throw InputError("lies outside of the image's folder");
    }
}

// `file` is in `folder` or below it; both without links.
bool IsInside(const fs::path& folder, const fs::path& file) {
    return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first ==
           folder.end();
}

}  // namespace

std::string ReadSidecar(const std::string& imagePath, const std::string& name) {
    CheckName(name);
    std::error_code fault;
    const fs::path parent = Native(imagePath).parent_path();
    const fs::path folder = WithoutLinks(parent.empty() ? fs::path(".") : parent, fault);
    if (fault) throw InputError("is missing");
    // Windows takes neither slashes nor dots in a name below a path without links.
    const fs::path below = PathOf(name).lexically_normal().make_preferred();
    const fs::path file = WithoutLinks(folder / below, fault);
    if (fault == std::errc::permission_denied) throw InputError("can't be read");
    if (fault) throw InputError("is missing");
    if (!IsInside(folder, file)) {
        throw InputError("is a link that leads out of the image's folder");
    }
    if (!fs::is_regular_file(file, fault)) throw InputError("is no file");
    const std::uintmax_t size = fs::file_size(file, fault);
    if (fault) throw InputError("can't be read");
    if (size > largestSidecar) {
        throw InputError("has more than " + std::to_string(largestSidecar >> 20) + " MB");
    }
    std::ifstream stream(file, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!stream.read(text.data(), static_cast<std::streamsize>(text.size()))) {
        throw InputError("can't be read");
    }
    return text;
}

}  // namespace command
