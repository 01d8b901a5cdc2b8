// The samples of deep pixels: put in order, and laid over one another.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace command {

constexpr std::size_t mostDeepIds = 8;

// A point (z and zBack are equal) or a volume of even density between z and zBack.
struct DeepSample {
    // Distances from the camera; the front one first.
    float z = 0.0F;
    float zBack = 0.0F;
    // 0 to 1.
    float alpha = 1.0F;
    // Red, green and blue, premultiplied.
    std::array<float, 3> color{};
    // Unsigned integers as such, halfs and floats by the bits of a float; 0 where there is no
    // channel.
    std::array<std::uint32_t, mostDeepIds> ids{};
};

// Makes pixels tidy; keeps its memory from one to the next.
class DeepTidier {
  public:
    // Sorts a pixel's samples from front to back, splits volumes where others begin or end in them,
    // and merges what then takes the same room. Samples of one room that differ in an id are not
    // merged: each id keeps one, with the opacity that it contributes there; laid over one another
    // in their order they are what the merged one would be. An id that shares its room with an
    // opaque one, and isn't opaque itself, contributes nothing and is gone. Samples that are tidy
    // already keep every bit.
    //
    // Alpha is clamped (NaN is 0). A sample whose z is NaN is left out; one whose zBack is before
    // its z, infinitely far or NaN is a point. Returns false, with the samples in no useful
    // state, when splitting would take more than some millions of pieces.
    bool Tidy(std::vector<DeepSample>& samples);

  private:
    // What a sample contributes to a room.
    struct Piece {
        const DeepSample* sample = nullptr;
        // Of the sample's length.
        double part = 1.0;
    };
    // What all samples of the same ids contribute to a room.
    struct Share {
        const DeepSample* sample = nullptr;
        double alpha = 0.0;
        std::array<double, 3> color{};
    };

    void Sort(std::vector<DeepSample>& samples);
    bool Split(const std::vector<DeepSample>& samples);
    void Merge(float front, float back);
    void TakeShares();
    Share& ShareOf(const DeepSample& sample);

    std::vector<std::size_t> order;
    std::vector<float> borders;
    std::vector<const DeepSample*> open;
    std::vector<Piece> pieces;
    std::vector<Share> shares;
    // What the pieces leave of the light from behind.
    double transmitted = 1.0;
    std::vector<DeepSample> tidy;
};

// Tidy samples, each over those behind it: red, green, blue, alpha, premultiplied.
std::array<float, 4> Flatten(std::span<const DeepSample> frontToBack);

}  // namespace command
