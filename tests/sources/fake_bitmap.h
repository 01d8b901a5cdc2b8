// A bitmap whose pixels a test spells out.
#pragma once

#include <bitmap.h>

#include <algorithm>
#include <utility>
#include <vector>

struct FakeStorage : BitmapStorage {
    int Width() override { return width; }
    int Height() override { return height; }
    float Aspect() override { return 1.0F; }
    DWORD Flags() override { return MAP_HAS_ALPHA; }
    int GetLinearPixels(int x, int y, int pixels, BMM_Color_64* ptr) override {
        return Copy(pixels64, x, y, pixels, ptr);
    }
    int GetLinearPixels(int x, int y, int pixels, BMM_Color_fl* ptr) override {
        return Copy(pixelsFloat, x, y, pixels, ptr);
    }

    template <class Pixel>
    int Copy(const std::vector<Pixel>& from, int x, int y, int pixels, Pixel* to) {
        if (from.empty()) return 0;
        ++reads;
        std::copy_n(from.begin() + y * width + x, pixels, to);
        return 1;
    }

    int width = 0;
    int height = 0;
    int reads = 0;
    std::vector<BMM_Color_64> pixels64;
    std::vector<BMM_Color_fl> pixelsFloat;
};

struct FakeBitmap : Bitmap {
    BitmapStorage* Storage() override { return storage; }
    void DeleteThis() override {}

    FakeStorage pixels;
    BitmapStorage* storage = &pixels;
};

// One row.
inline void SetRow(FakeBitmap& bitmap, std::vector<BMM_Color_64> row) {
    bitmap.pixels.width = static_cast<int>(row.size());
    bitmap.pixels.height = 1;
    bitmap.pixels.pixels64 = std::move(row);
}
inline void SetRow(FakeBitmap& bitmap, std::vector<BMM_Color_fl> row) {
    bitmap.pixels.width = static_cast<int>(row.size());
    bitmap.pixels.height = 1;
    bitmap.pixels.pixelsFloat = std::move(row);
}
