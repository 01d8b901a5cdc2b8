// Settings files that anybody may have edited: whatever stands in one, a record is found whole or
// not at all, and one that is written is found and leaves the others as they were.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "plugin/profile_text.h"

namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

template <std::size_t size>
void FindAndSet(const std::string& profile, std::string_view section, std::string_view key) {
    std::array<std::uint8_t, size> untouched{};
    untouched.fill(0xA5);
    std::array<std::uint8_t, size> record = untouched;
    const bool found = plugin::FindProfileRecord(profile, section, key, record);
    Expect(found || record == untouched);
    // What was found needs two digits a byte and two more for the checksum.
    Expect(!found || profile.size() >= 2 * (size + 1));

    constexpr std::string_view neighbour = "Neighbour";
    const auto text = plugin::FindProfileString(profile, section, neighbour);
    std::string changed = profile;
    if (!plugin::SetProfileRecord(changed, section, key, untouched)) {
        Expect(changed == profile);
        Expect(!plugin::IsProfile(profile) || profile.size() > plugin::largestProfile / 2);
        return;
    }
    record.fill(0);
    Expect(plugin::FindProfileRecord(changed, section, key, record) && record == untouched);
    Expect(plugin::FindProfileString(changed, section, neighbour) == text);
    const std::string once = changed;
    Expect(plugin::SetProfileRecord(changed, section, key, untouched) && changed == once);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string profile(reinterpret_cast<const char*>(data), size);
    FindAndSet<4>(profile, "Warnings", "DisableVrayFrameBufferWarnings");
    FindAndSet<40>(profile, "LayerPresets", "0000000100000002");
    FindAndSet<1>(profile, "S", "K");
    FindAndSet<0>(profile, "S", "K");
    std::array<std::uint8_t, 1> record{};
    Expect(!plugin::FindProfileRecord(profile, "", "", record));
    return 0;
}
