#include "ui/list_height.h"

#include <cstdint>

#include "plugin/config_file.h"

namespace ui {
namespace {

bool IsListHeight(std::int64_t height) {
    return height >= lowestList && height <= highestList;
}

plugin::ConfigFile HeightSettings() {
    plugin::ConfigFile config;
    config.SetSection(_M("UserInterface"));
    return config;
}

}  // namespace

std::optional<int> StoredListHeight(const ListView& list) {
    std::uint32_t height = 0;
    if (!HeightSettings().ReadInt(list.heightKey, height) || !IsListHeight(height)) {
        return std::nullopt;
    }
    return static_cast<int>(height);
}

std::optional<ListSize> ApplyListViewHeight(const ListView& list, const ListSize& present,
                                            int height, bool relative) {
    const std::int64_t wanted = relative ? std::int64_t{present.list} + height : height;
    const std::int64_t dialog = present.dialog + wanted - present.list;
    if (!IsListHeight(wanted) || dialog <= 0) return std::nullopt;
    HeightSettings().WriteInt(list.heightKey, static_cast<std::uint32_t>(wanted));
    return ListSize{static_cast<int>(wanted), static_cast<int>(dialog)};
}

}  // namespace ui
