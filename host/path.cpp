// Paths by name: nothing here looks whether a file is there, only ConvertToAbsolute asks for the
// current folder.
#include <Path.h>

#ifdef _WIN32
#include <cwchar>
#endif
#include <string>

#include "host/text.h"

namespace {

using Text = std::basic_string<MCHAR>;

#ifdef _WIN32
constexpr MCHAR SEPARATOR = _M('\\');
constexpr bool IsSeparator(MCHAR unit) {
    return unit == _M('\\') || unit == _M('/');
}
#else
constexpr MCHAR SEPARATOR = _M('/');
constexpr bool IsSeparator(MCHAR unit) {
    return unit == _M('/');
}
#endif

// The separator that makes a path absolute is never dropped: units of the root's name, with it.
std::size_t RootLength(const Text& path) {
#ifdef _WIN32
    if (path.size() >= 2 && path[1] == _M(':')) {
        return path.size() >= 3 && IsSeparator(path[2]) ? 3 : 2;
    }
#endif
    return !path.empty() && IsSeparator(path[0]) ? 1 : 0;
}

// Where the last name begins.
std::size_t LeafStart(const Text& path) {
    std::size_t start = path.size();
    while (start > RootLength(path) && !IsSeparator(path[start - 1])) {
        --start;
    }
    return start;
}

Text FolderOf(const Text& path) {
    const std::size_t start = LeafStart(path);
    const std::size_t root = RootLength(path);
    return path.substr(0, start > root ? start - 1 : root);
}

// Whether the system could have a file of that name.
bool NamesAFile(const MCHAR* path) {
    if (!*path || !host::IsValidUtf16(path)) {
        return false;
    }
#ifdef _WIN32
    // Of units, as the system counts them.
    constexpr std::size_t MAX_PATH_UNITS = 32766;
    constexpr std::size_t MAX_NAME_UNITS = 255;
    const Text name(path);
    if (name.size() > MAX_PATH_UNITS) {
        return false;
    }
    std::size_t nameUnits = 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool drive = at == 1 && name[at] == L':';
        nameUnits = IsSeparator(name[at]) ? 0 : nameUnits + 1;
        if (name[at] < 0x20 || nameUnits > MAX_NAME_UNITS ||
            (!drive && std::wcschr(L"<>\"|?*:", name[at]))) {
            return false;
        }
    }
#else
    // Of bytes, as the system counts them.
    constexpr std::size_t MAX_PATH_BYTES = 4095;
    constexpr std::size_t MAX_NAME_BYTES = 255;
    const std::string bytes = host::ToUtf8(path);
    if (bytes.size() > MAX_PATH_BYTES) {
        return false;
    }
    std::size_t nameBytes = 0;
    for (const char byte : bytes) {
        nameBytes = byte == '/' ? 0 : nameBytes + 1;
        if (nameBytes > MAX_NAME_BYTES) {
            return false;
        }
    }
#endif
    return true;
}

}  // namespace

namespace MaxSDK::Util {

bool Path::ConvertToAbsolute() {
    if (!NamesAFile(GetCStr())) {
        return false;
    }
    std::error_code error;
    const auto absolute = std::filesystem::absolute(host::ToNativePath(GetCStr()), error);
    if (error) {
        return false;
    }
    path_ = host::FromNativePath(absolute.lexically_normal().make_preferred());
    return true;
}

Path& Path::StripToLeaf() {
    const Text path(GetCStr());
    path_ = MSTR(path.substr(LeafStart(path)));
    return *this;
}

Path& Path::RemoveLeaf() {
    path_ = MSTR(FolderOf(GetCStr()));
    return *this;
}

// The empty path is the current folder and stays empty: a separator would make it the root.
Path& Path::AddTrailingBackslash() {
    Text path(GetCStr());
    if (!path.empty() && !IsSeparator(path.back())) {
        path_ = MSTR(path + SEPARATOR);
    }
    return *this;
}

Path& Path::Append(const MCHAR* leaf) {
    AddTrailingBackslash();
    path_ += leaf;
    return *this;
}

bool operator==(const Path& left, const Path& right) {
#ifdef _WIN32
    return _wcsicmp(left.GetCStr(), right.GetCStr()) == 0;
#else
    return left.path_ == right.path_;
#endif
}

}  // namespace MaxSDK::Util

void SplitFilename(const MSTR& path, MSTR* folder, MSTR* base, MSTR* extension) {
    const Text whole(path.data());
    const Text leaf = whole.substr(LeafStart(whole));
    const std::size_t dot = leaf.rfind(_M('.'));
    if (folder) {
        *folder = MSTR(FolderOf(whole));
    }
    if (base) {
        *base = MSTR(leaf.substr(0, dot));
    }
    if (extension) {
        *extension = dot == Text::npos ? MSTR() : MSTR(leaf.substr(dot));
    }
}
