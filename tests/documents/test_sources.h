// Pixel sources with values that a test can foretell.
#pragma once

#include <boost/make_shared.hpp>
#include <cstdint>
#include <utility>
#include <vector>

#include "psdfile/channel_source.h"

namespace psdfile {

// 8-bit rows given one by one; counts what it is asked for.
class Rows8 : public PSDChannelImageDataSource {
  public:
    explicit Rows8(std::vector<std::vector<std::uint8_t>> pixelRows) : rows(std::move(pixelRows)) {}

    const std::uint8_t* GetRow8(std::uint32_t row) override {
        asked.push_back(row);
        return rows.at(row).data();
    }

    std::vector<std::vector<std::uint8_t>> rows;
    std::vector<std::uint32_t> asked;
};

// 16-bit rows; the 8-bit ones are zeros that no test may see.
class Rows16 : public Rows8 {
  public:
    explicit Rows16(std::vector<std::vector<std::uint16_t>> pixelRows)
        : Rows8(std::vector<std::vector<std::uint8_t>>(
              pixelRows.size(), std::vector<std::uint8_t>(pixelRows.at(0).size()))),
          words(std::move(pixelRows)) {}

    const std::uint16_t* GetRow16(std::uint32_t row) override { return words.at(row).data(); }

    std::vector<std::vector<std::uint16_t>> words;
};

class Rows32 : public Rows8 {
  public:
    explicit Rows32(std::vector<std::vector<float>> pixelRows)
        : Rows8(std::vector<std::vector<std::uint8_t>>(
              pixelRows.size(), std::vector<std::uint8_t>(pixelRows.at(0).size()))),
          floats(std::move(pixelRows)) {}

    const float* GetRow32(std::uint32_t row) override { return floats.at(row).data(); }

    std::vector<std::vector<float>> floats;
};

// One value over `width` pixels. Says so if `solid`.
class OneValue : public PSDChannelImageDataSource {
  public:
    OneValue(std::size_t width, std::uint8_t pixel, bool solid)
        : row(width, pixel), isSolid(solid) {}

    const std::uint8_t* GetRow8(std::uint32_t /*row*/) override { return row.data(); }
    bool IsSolid() override { return isSolid; }
    std::uint8_t GetSolidValue8() override { return row.at(0); }

  private:
    std::vector<std::uint8_t> row;
    bool isSolid;
};

// A pattern that differs in every pixel neighbourhood and with every seed.
inline boost::shared_ptr<Rows8> Pattern(std::uint32_t width, std::uint32_t height,
                                        std::uint32_t seed) {
    std::vector<std::vector<std::uint8_t>> rows(height, std::vector<std::uint8_t>(width));
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            rows[y][x] = static_cast<std::uint8_t>(x / 3 * seed + y * 11 + x * x % 7);
        }
    }
    return boost::make_shared<Rows8>(std::move(rows));
}

inline PSDChannelImageDataSourcePtr Flat(std::size_t width, std::uint8_t value) {
    return boost::make_shared<OneValue>(width, value, false);
}

inline PSDChannelImageDataSourcePtr Solid(std::size_t width, std::uint8_t value) {
    return boost::make_shared<OneValue>(width, value, true);
}

}  // namespace psdfile
