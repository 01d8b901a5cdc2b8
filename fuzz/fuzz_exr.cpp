// OpenEXR render files.
#include "command/exr_file.h"

#include <cmath>

#include "command/deep_channels.h"
#include "fuzz/read_render_file.h"

namespace {

// All channels of a layer at once, and where the layer is deep its samples. Rows must lie in the
// frame, deep samples must be tidy.
void ReadLayer(command::RenderFile& file, std::size_t layer) {
    const command::Description& description = file.GetDescription();
    const command::Part& part = description.parts[description.layers[layer].part];
    if (part.deep) {
        command::Beauty beauty;
        beauty.layer = layer;
        file.ReadDeepRows(0, command::ChooseDeepChannels(description, beauty),
                          [&](int, const command::DeepRow& row) {
                              for (std::size_t x = 0; x + 1 < row.starts.size(); ++x) {
                                  const auto pixel = row.Pixel(x);
                                  for (std::size_t i = 1; i < pixel.size(); ++i) {
                                      if (!(pixel[i - 1].z <= pixel[i].z)) __builtin_trap();
                                  }
                              }
                          });
        return;
    }
    std::vector<command::ChannelRef> channels;
    for (std::size_t i = 0; i < description.layers[layer].channels.size(); ++i)
        channels.push_back({layer, i});
    const auto width = static_cast<std::size_t>(description.parts[0].displayWindow.Width());
    std::uint64_t sum = 0;
    file.ReadRows(0, channels, [&](int, std::span<const command::ChannelRow> rows) {
        for (const command::ChannelRow& row : rows) {
            if (row.first < 0 || row.count < 0 ||
                static_cast<std::size_t>(row.first) + static_cast<std::size_t>(row.count) > width) {
                __builtin_trap();
            }
            const auto bytes = width * (row.type == command::SampleType::Half ? 2 : 4);
            const auto* at = static_cast<const unsigned char*>(row.samples);
            for (std::size_t i = 0; i < bytes; ++i)
                sum += at[i];
        }
    });
    volatile std::uint64_t seen = sum;
    static_cast<void>(seen);
}

// Sound enough for the application: in 32 bits, with axes of a length of 1.
void CheckCamera(const command::RenderCamera& camera) {
    const auto& matrix = camera.transform;
    for (const double each : matrix) {
        if (!std::isfinite(static_cast<float>(each))) __builtin_trap();
    }
    for (const std::size_t axis : {0U, 1U, 2U}) {
        const double length = std::hypot(matrix[axis], matrix[4 + axis], matrix[8 + axis]);
        if (std::abs(length - 1.0) > 1e-6) __builtin_trap();
    }
    const command::CameraLens& lens = camera.lens;
    const bool sound = lens.fieldOfView >= 0.0 && lens.fieldOfView < 180.0 && lens.width >= 0.0 &&
                       (lens.fieldOfView == 0.0 || lens.width == 0.0) && lens.nearRange >= 0.0 &&
                       lens.farRange >= 0.0;
    if (!sound) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!ReadRenderFile("fuzz.exr", data, size)) return 0;
    const auto file = command::OpenExrFile(
        "fuzz.exr", static_cast<const char*>(static_cast<const void*>(data)), size);
    for (const command::Part& part : file->GetDescription().parts) {
        if (part.camera) CheckCamera(*part.camera);
    }
    for (std::size_t layer = 0; layer < file->GetDescription().layers.size(); ++layer) {
        try {
            ReadLayer(*file, layer);
        } catch (const command::InputError&) {
            // As it should be.
        }
    }
    return 0;
}
