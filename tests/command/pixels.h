// Looking at pictures in tests.
#pragma once

#include <Imath/half.h>

#include <array>
#include <cstdint>
#include <string>

#include "command/beauty.h"
#include "command/render_file.h"

// Red, green, blue, alpha of one pixel; the frame's upper left is (0, 0).
inline std::array<float, 4> PixelAt(const command::Picture& picture, int x, int y) {
    const auto start = (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                        static_cast<std::size_t>(x)) *
                       4;
    std::array<float, 4> pixel{};
    for (std::size_t i = 0; i < pixel.size(); ++i) {
        if (const auto* halfs = std::get_if<std::vector<std::uint16_t>>(&picture.components)) {
            Imath::half sample;
            sample.setBits(halfs->at(start + i));
            pixel[i] = sample;
        } else {
            pixel[i] = std::get<std::vector<float>>(picture.components).at(start + i);
        }
    }
    return pixel;
}

inline bool IsOfHalfs(const command::Picture& picture) {
    return picture.components.index() == 0;
}

// The picture of a file in memory.
inline command::Picture ReadBytes(const std::string& name, const std::string& bytes,
                                  const std::string& beauty = {}) {
    const auto file = command::OpenRenderFile(name, bytes.data(), bytes.size());
    return file->Read(command::ChooseBeauty(file->GetDescription(), beauty));
}
