// Settings files that anybody may have edited: whatever stands in one, a record is found whole or
// not at all.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "plugin/profile_record.h"

namespace {

template <std::size_t size>
void Find(std::string_view profile, std::string_view section, std::string_view key) {
    std::array<std::uint8_t, size> untouched{};
    untouched.fill(0xA5);
    std::array<std::uint8_t, size> record = untouched;
    const bool found = plugin::FindProfileRecord(profile, section, key, record);
    if (!found && record != untouched) std::abort();
    // What was found needs two digits a byte and two more for the checksum.
    if (found && profile.size() < 2 * (size + 1)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view profile(reinterpret_cast<const char*>(data), size);
    Find<4>(profile, "Warnings", "DisableVrayFrameBufferWarnings");
    Find<40>(profile, "LayerPresets", "0000000100000002");
    Find<1>(profile, "S", "K");
    Find<0>(profile, "", "");
    return 0;
}
