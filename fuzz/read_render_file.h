// What both fuzz targets of render files do with their input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "command/beauty.h"
#include "command/failure.h"
#include "command/info.h"
#include "command/render_file.h"

// Describes the file in both forms and reads its picture, if it is small enough to fuzz with. Only
// InputError may come out of any of it, and every value must be finite and there. Whether the file
// could be opened and is small.
inline bool ReadRenderFile(const std::string& path, const std::uint8_t* data, std::size_t size) {
    constexpr std::int64_t mostPixels = 1 << 18;
    bool isSmall = false;
    try {
        const auto file = command::OpenRenderFile(
            path, static_cast<const char*>(static_cast<const void*>(data)), size);
        const command::Description& description = file->GetDescription();
        const command::RenderInfo info = command::Inform(description);
        command::DescribeAsText(info);
        command::DescribeAsJson(info);
        for (const command::Part& part : description.parts) {
            // Larger ones fail by the same code, only slower.
            if (part.displayWindow.Width() * part.displayWindow.Height() > mostPixels ||
                part.dataWindow.Width() * part.dataWindow.Height() > mostPixels) {
                return false;
            }
        }
        isSmall = true;
        const command::Picture picture = file->Read(command::ChooseBeauty(description));
        const std::size_t components =
            std::visit([](const auto& all) { return all.size(); }, picture.components);
        const auto expected =
            static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4;
        if (components != expected) __builtin_trap();
    } catch (const command::InputError&) {
        // As it should be: most inputs are broken.
    }
    return isSmall;
}
