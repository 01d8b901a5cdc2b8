// Names of image files.
#include <algorithm>
#include <cstdlib>
#include <string>

#include <Path.h>
#include <bitmap.h>

#include "host/format.h"
#include "host/text.h"

BOOL BMMIsFile(const MCHAR* filename) {
    std::error_code error;
    const auto status = std::filesystem::status(host::ToNativePath(filename), error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool BMMCreateNumberedFilename(const MCHAR* namein, int frame, MCHAR* nameout, std::size_t size) {
    std::basic_string<MCHAR> name(namein);
    if (frame != BMM_FRAME_NUMBER_NONE) {
        MSTR extension;
        SplitFilename(MSTR(namein), nullptr, nullptr, &extension);
        const auto digits = std::abs(static_cast<long long>(frame));
        const MSTR number = host::Format(_M("%s%04lld"), frame < 0 ? _M("-") : _M(""), digits);
        name.insert(name.size() - static_cast<std::size_t>(extension.Length()), number.data());
    }
    if (size == 0) {
        return false;
    }
    if (name.size() >= size) {
        *nameout = 0;
        return false;
    }
    *std::copy(name.begin(), name.end(), nameout) = 0;
    return true;
}
