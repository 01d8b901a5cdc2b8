#include "plugin/plain_profile_file.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "plugin/profile_text.h"

namespace plugin {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> Load(const fs::path& path) {
    const fs::file_status status = fs::status(path);
    if (!fs::exists(status)) return std::string();
    // Merely to open a pipe may take for ever.
    if (!fs::is_regular_file(status)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string bytes(largestProfile + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.bad() || !(file.good() || file.eof())) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    if (!IsProfile(bytes)) return std::nullopt;
    return bytes;
}

bool IsWritable(const fs::path& path) {
    const fs::file_status status = fs::status(path);
    if (!fs::exists(status)) return true;
    constexpr fs::perms anybody =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    // Opening changes nothing, and asks about this user.
    return (status.permissions() & anybody) != fs::perms::none &&
           std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).is_open();
}

// The file itself where `path` is a link to it.
fs::path Target(const fs::path& path) {
    return fs::exists(path) ? fs::canonical(path) : path;
}

fs::path FreeNameBeside(const fs::path& path) {
    std::random_device random;
    fs::path name;
    do {
        name = path;
        name += std::string(".").append(std::to_string(random())).append(".new");
    } while (fs::exists(name));
    return name;
}

bool Write(const fs::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    return file.good();
}

bool Replace(const fs::path& path, const std::string& bytes) {
    const fs::path target = Target(path);
    const fs::path fresh = FreeNameBeside(target);
    std::error_code error = std::make_error_code(std::errc::io_error);
    if (Write(fresh, bytes)) {
        error.clear();
        if (fs::exists(target)) fs::permissions(fresh, fs::status(target).permissions(), error);
        if (!error) fs::rename(fresh, target, error);
    }
    std::error_code ignored;
    if (error) fs::remove(fresh, ignored);
    return !error;
}

// What `action` gives, or `otherwise` for an empty path and when something is thrown: by a path
// that is no valid text, by a folder that may not be looked into, for want of memory.
template <typename Action, typename Result>
Result Guarded(const MCHAR* path, Result otherwise, Action action) {
    if (!path || !*path) return otherwise;
    try {
        return action(fs::path(path));
    } catch (const std::exception&) {
        return otherwise;
    }
}

}  // namespace

std::optional<std::string> LoadProfile(const MCHAR* path) {
    return Guarded(path, std::optional<std::string>(), Load);
}

bool IsWritable(const MCHAR* path) {
    return Guarded(path, false, [](const fs::path& file) { return IsWritable(file); });
}

std::string ProfileName(const MCHAR* name) {
    std::string narrow;
    for (; name && *name; ++name) {
        if (*name > 0x7F) return {};
        narrow.push_back(static_cast<char>(*name));
    }
    return IsProfileName(narrow) ? narrow : std::string();
}

bool ReadPlainRecord(const ProfilePlace& place, std::span<std::uint8_t> record) {
    return Guarded(place.path, false, [&](const fs::path& path) {
        const std::optional<std::string> bytes = Load(path);
        return bytes && FindProfileRecord(*bytes, ProfileName(place.section),
                                          ProfileName(place.key), record);
    });
}

bool WritePlainRecord(const ProfilePlace& place, std::span<const std::uint8_t> record) {
    return Guarded(place.path, false, [&](const fs::path& path) {
        const std::optional<std::string> before = Load(path);
        if (!before || !IsWritable(path)) return false;
        std::string bytes = *before;
        if (!SetProfileRecord(bytes, ProfileName(place.section), ProfileName(place.key), record)) {
            return false;
        }
        return bytes == *before || Replace(path, bytes);
    });
}

std::size_t ReadPlainString(const ProfilePlace& place, std::span<MCHAR> text) {
    if (text.empty()) return 0;
    text.front() = 0;
    return Guarded(place.path, std::size_t{0}, [&](const fs::path& path) {
        const std::optional<std::string> bytes = Load(path);
        const std::optional<MSTR> value =
            bytes ? FindProfileString(*bytes, ProfileName(place.section), ProfileName(place.key))
                  : std::nullopt;
        if (!value) return std::size_t{0};
        const std::size_t count =
            std::min(static_cast<std::size_t>(value->Length()), text.size() - 1);
        std::copy_n(value->data(), count, text.begin());
        text[count] = 0;
        return count;
    });
}

}  // namespace plugin
