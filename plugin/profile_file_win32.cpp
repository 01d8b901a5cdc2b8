#include <windows.h>

#include <algorithm>
#include <exception>
#include <vector>

#include "plugin/plain_profile_file.h"
#include "plugin/profile_file.h"

namespace plugin {
namespace {

// The system's functions take a null or empty name for something else than a name, and would write
// anew a file that was never a profile.
bool IsAProfiles(const ProfilePlace& place) {
    return !ProfileName(place.section).empty() && !ProfileName(place.key).empty() &&
           LoadProfile(place.path);
}

bool IsDigit(wchar_t unit) {
    return (unit >= L'0' && unit <= L'9') || (unit >= L'A' && unit <= L'F') ||
           (unit >= L'a' && unit <= L'f');
}

// Not every system's function that reads a record minds what follows it, or other letters in it.
bool HasDigits(const ProfilePlace& place, std::size_t count) {
    std::vector<wchar_t> value(count + 2);
    const DWORD length = GetPrivateProfileStringW(place.section, place.key, L"", value.data(),
                                                  static_cast<DWORD>(value.size()), place.path);
    return length == count &&
           std::all_of(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(count), IsDigit);
}

}  // namespace

bool ReadProfileRecord(const ProfilePlace& place, std::span<std::uint8_t> record) try {
    if (!IsAProfiles(place) || !HasDigits(place, 2 * (record.size() + 1))) return false;
    // A failed read has already written in its buffer; without a buffer it is another function.
    std::vector<std::uint8_t> found(record.size() + 1);
    if (!GetPrivateProfileStructW(place.section, place.key, found.data(),
                                  static_cast<UINT>(record.size()), place.path)) {
        return false;
    }
    std::copy_n(found.begin(), record.size(), record.begin());
    return true;
} catch (const std::exception&) {
    return false;
}

bool WriteProfileRecord(const ProfilePlace& place, std::span<const std::uint8_t> record) try {
    if (!IsAProfiles(place) || !IsWritable(place.path)) return false;
    // Without a buffer the key would be deleted.
    std::vector<std::uint8_t> bytes(record.begin(), record.end());
    bytes.push_back(0);
    return WritePrivateProfileStructW(place.section, place.key, bytes.data(),
                                      static_cast<UINT>(record.size()), place.path) != 0;
} catch (const std::exception&) {
    return false;
}

std::size_t ReadProfileString(const ProfilePlace& place, std::span<MCHAR> text) try {
    if (text.empty()) return 0;
    text.front() = 0;
    if (!IsAProfiles(place)) return 0;
    return GetPrivateProfileStringW(place.section, place.key, L"", text.data(),
                                    static_cast<DWORD>(text.size()), place.path);
} catch (const std::exception&) {
    return 0;
}

}  // namespace plugin
