#include "plugin/profile_file.h"

#include "plugin/plain_profile_file.h"

namespace plugin {

bool ReadProfileRecord(const ProfilePlace& place, std::span<std::uint8_t> record) {
    return ReadPlainRecord(place, record);
}

bool WriteProfileRecord(const ProfilePlace& place, std::span<const std::uint8_t> record) {
    return WritePlainRecord(place, record);
}

std::size_t ReadProfileString(const ProfilePlace& place, std::span<MCHAR> text) {
    return ReadPlainString(place, text);
}

}  // namespace plugin
